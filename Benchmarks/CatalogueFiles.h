// A generated catalogue of functions as an installation has it, for the measuring programs: the same files on every
// run.
#pragma once

#include <string>
#include <vector>

#include "Support/TemporaryDirectory.h"

namespace brindle_benchmark {

struct CatalogueSize {
    int entries = 5'000;
    int definitionFiles = 5;
};

// An installation in a temporary directory, removed with the object. It holds "configuration/functions" with about
// 1,000 bytes of definition for each entry, and in each of ten locales a text for each entry. Some entries share their
// text, as functions of several vendors do. Failures to write throw std::runtime_error.
class GeneratedCatalogue {
public:
    explicit GeneratedCatalogue(const CatalogueSize& size = {});

    // What stands for "." in the installation.
    std::string ProgramDirectory() const { return m_root.Path() + "/bin"; }
    // All files of the catalogue, in the order in which they are read.
    const std::vector<std::string>& Files() const { return m_files; }
    static const std::vector<std::string>& Locales();

private:
    void Write(const std::string& name, const std::string& content);

    brindle_test::TemporaryDirectory m_root;
    std::vector<std::string> m_files;
};

} // namespace brindle_benchmark
