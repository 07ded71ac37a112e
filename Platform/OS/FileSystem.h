// What the layer asks of the file system beside its file class: whole files, files that grow at their end, directories.
// Paths are UTF-8; an empty path and one with a zero byte name nothing.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace brindle_platform {

// Owns an open file; not inherited by programs that the process starts. One thread at a time.
class FileDescriptor {
public:
    explicit FileDescriptor(int descriptor = -1) noexcept : m_descriptor(descriptor) {}
    FileDescriptor(FileDescriptor&& other) noexcept : m_descriptor(std::exchange(other.m_descriptor, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor();

    int get() const noexcept { return m_descriptor; }
    bool isOpen() const noexcept { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

inline constexpr int kStandardError = 2;

// The bytes of a regular file; none if it can't be read or holds more than `limit` bytes.
std::optional<std::string> readWholeFile(std::string_view path, std::size_t limit);

// A file, made if it is missing, whose writes go to its end, also if other processes have moved that. Not open on
// failure.
FileDescriptor openForAppend(std::string_view path);

// Whether all bytes were written.
bool writeAll(int descriptor, std::string_view bytes) noexcept;

bool directoryExists(std::string_view path);

// Makes missing parents too, open to all but for the umask; true if the directory stands afterwards.
bool makeDirectory(std::string_view path);

} // namespace brindle_platform
