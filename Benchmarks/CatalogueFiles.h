// A generated catalogue of functions as an installation has it, for the measuring programs: the same files on every
// run.
#pragma once

#include <string>
#include <vector>

namespace brindle_benchmark {

struct CatalogueSize {
    int entries = 5'000;
    int definitionFiles = 5;
};

// An installation in a directory of its own below the system's place for temporary files, removed with the object. It
// holds "configuration/functions" with about 1,000 bytes of definition for each entry, and in each of ten locales a
// text for each entry. Some entries share their text, as functions of several vendors do. Failures to write throw
// std::runtime_error.
class GeneratedCatalogue {
public:
    explicit GeneratedCatalogue(const CatalogueSize& size = {});
    GeneratedCatalogue(const GeneratedCatalogue&) = delete;
    GeneratedCatalogue& operator=(const GeneratedCatalogue&) = delete;
    ~GeneratedCatalogue();

    // What stands for "." in the installation.
    std::string ProgramDirectory() const { return m_root + "/bin"; }
    // All files of the catalogue, in the order in which they are read.
    const std::vector<std::string>& Files() const { return m_files; }
    static const std::vector<std::string>& Locales();

private:
    void Write(const std::string& name, const std::string& content);

    std::string m_root;
    std::vector<std::string> m_files;
};

} // namespace brindle_benchmark
