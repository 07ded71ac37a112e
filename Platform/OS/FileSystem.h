// What the layer asks of the file system: open files, whole files, files that grow at their end, directories.
// Paths are UTF-8; an empty path and one with a zero byte name nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

    // False if no file was open, or the system told only now that not all was written. Not open afterwards.
    bool close() noexcept;

private:
    int m_descriptor;
};

inline constexpr int kStandardError = 2;

// The bytes of a regular file; none if it can't be read or holds more than `limit` bytes.
std::optional<std::string> readWholeFile(std::string_view path, std::size_t limit);

// A file, made if it is missing, whose writes go to its end, also if other processes have moved that. Not open on
// failure.
FileDescriptor openForAppend(std::string_view path);

enum class EOpenRegular { readOnly, make, makeEmpty };

// A regular file at its start, for reading or for both directions; but for readOnly it is made if it is missing, and
// with makeEmpty it loses what it holds. Not open on failure, and for what is no regular file.
FileDescriptor openRegularFile(std::string_view path, EOpenRegular how);

// How many bytes the open file holds now; none if that can't be told.
std::optional<std::size_t> fileSize(int descriptor) noexcept;

// How many bytes were read, fewer than `count` only at the end of the file or on an error, which sets `failed`; and how
// many were written, fewer than all only on an error.
std::size_t readFully(int descriptor, char* bytes, std::size_t count, bool* failed = nullptr) noexcept;
std::size_t writeFully(int descriptor, std::string_view bytes) noexcept;

// Whether all bytes were written.
inline bool writeAll(int descriptor, std::string_view bytes) noexcept {
    return writeFully(descriptor, bytes) == bytes.size();
}

enum class ESeekOrigin { start, current, end };

// False, with the position as it was, if it would lie before the start.
bool seekFile(int descriptor, std::int64_t offset, ESeekOrigin origin) noexcept;

// The bare names of the regular files in the directory, links to such files among them, in no order; none if it can't
// be read.
std::optional<std::vector<std::string>> regularFileNames(std::string_view path);

bool directoryExists(std::string_view path);

// Makes missing parents too, open to all but for the umask; true if the directory stands afterwards.
bool makeDirectory(std::string_view path);

} // namespace brindle_platform
