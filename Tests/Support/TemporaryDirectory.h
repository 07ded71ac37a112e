// A directory below the system's place for temporary files, removed with all that is in it when the object goes. Tests,
// measuring programs and fuzz targets use it.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace brindle_test {

class TemporaryDirectory {
public:
    // Throws std::runtime_error if it can't be made.
    TemporaryDirectory() {
        if (mkdtemp(m_path.data()) == nullptr) throw std::runtime_error("cannot make a temporary directory");
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& Path() const { return m_path; }

    // Answers the file's path, which is `name` itself if that is a full path. Directories on the way to it are made.
    std::string Write(const std::string& name, std::string_view content) const {
        const std::filesystem::path path = std::filesystem::path(m_path) / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
        return path;
    }

private:
    std::string m_path = std::filesystem::temp_directory_path() / "brindle-XXXXXX";
};

} // namespace brindle_test
