// The peer of the catalogue's loading: an XML file as a bare tree of strings, built by Expat, and nothing more.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace brindle_benchmark {

struct BareElement {
    std::string tag;
    std::vector<std::pair<std::string, std::string>> attributes;
    std::string text; // of the element itself, all pieces joined
    std::vector<BareElement> children;

    // Of the first child with that tag; empty if there is none.
    const std::string& TextOfChild(const char* wanted) const;
};

// Throws std::runtime_error when the file can't be read or isn't well-formed.
BareElement ReadBareTree(const std::string& path);

} // namespace brindle_benchmark
