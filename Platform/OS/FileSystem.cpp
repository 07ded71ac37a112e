#include "OS/FileSystem.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace brindle_platform {
namespace {

bool isUsablePath(std::string_view path) { return !path.empty() && path.find('\0') == std::string_view::npos; }

FileDescriptor openPath(std::string_view path, int flags) {
    if (!isUsablePath(path)) return FileDescriptor();
    const std::string terminated(path);
    int descriptor;
    do {
        descriptor = ::open(terminated.c_str(), flags | O_CLOEXEC | O_NOCTTY, 0666);
    } while (descriptor < 0 && errno == EINTR);
    return FileDescriptor(descriptor);
}

// Bytes read, fewer than `count` only at the end of the file; -1 on failure.
ssize_t readFully(int descriptor, char* bytes, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = ::read(descriptor, bytes + done, count - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return -1;
        if (got == 0) break;
        done += static_cast<std::size_t>(got);
    }
    return static_cast<ssize_t>(done);
}

} // namespace

FileDescriptor::~FileDescriptor() {
    if (isOpen()) ::close(m_descriptor);
}

std::optional<std::string> readWholeFile(std::string_view path, std::size_t limit) {
    // Opening a pipe would wait for its writer.
    const FileDescriptor file = openPath(path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) return std::nullopt;
    struct stat status;
    if (::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
    if (static_cast<std::size_t>(status.st_size) > limit) return std::nullopt;

    // One byte more than the file had shows whether it has grown since.
    std::string bytes;
    std::size_t done = 0;
    std::size_t room = static_cast<std::size_t>(status.st_size) + 1;
    for (;;) {
        bytes.resize(room);
        const ssize_t got = readFully(file.get(), bytes.data() + done, room - done);
        if (got < 0) return std::nullopt;
        done += static_cast<std::size_t>(got);
        if (done < room) break;
        if (done > limit) return std::nullopt;
        room = done < limit / 2 ? 2 * done : limit + 1;
    }
    bytes.resize(done);
    return bytes;
}

FileDescriptor openForAppend(std::string_view path) { return openPath(path, O_WRONLY | O_CREAT | O_APPEND); }

bool writeAll(int descriptor, std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const ssize_t put = ::write(descriptor, bytes.data(), bytes.size());
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
    return true;
}

bool directoryExists(std::string_view path) {
    std::error_code ignored;
    return isUsablePath(path) && std::filesystem::is_directory(std::filesystem::path(path), ignored);
}

bool makeDirectory(std::string_view path) {
    if (!isUsablePath(path)) return false;
    std::error_code ignored;
    std::filesystem::create_directories(std::filesystem::path(path), ignored);
    return directoryExists(path);
}

} // namespace brindle_platform
