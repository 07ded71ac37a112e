// A directory of the target's own for doors that are files, below the system's place for temporary files; it goes with
// the object.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "FuzzCheck.h"

namespace brindle_fuzz {

class TemporaryDirectory {
public:
    TemporaryDirectory() : m_path((std::filesystem::temp_directory_path() / "brindle-fuzz-XXXXXX").string()) {
        Require(mkdtemp(m_path.data()) != nullptr, "there is a directory");
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    const std::string& Path() const { return m_path; }

    // Answers the file's path. Its directory must be there.
    std::string Write(const std::string& name, std::string_view content) const {
        std::string path = m_path + "/" + name;
        std::ofstream(path, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
        return path;
    }

private:
    std::string m_path;
};

} // namespace brindle_fuzz
