// A directory of a measuring program's own, below the system's place for temporary files; it goes with the object.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace brindle_benchmark {

class TemporaryDirectory {
public:
    // Throws std::runtime_error if it can't be made.
    TemporaryDirectory() : m_path((std::filesystem::temp_directory_path() / "brindle-benchmark-XXXXXX").string()) {
        if (mkdtemp(m_path.data()) == nullptr) throw std::runtime_error("cannot make a temporary directory");
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

} // namespace brindle_benchmark
