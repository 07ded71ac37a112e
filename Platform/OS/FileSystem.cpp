#include "OS/FileSystem.h"

#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>

#include <dirent.h>
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

bool isRegularFile(int descriptor, struct stat& status) {
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

FileDescriptor::~FileDescriptor() { close(); }

bool FileDescriptor::close() noexcept {
    const int descriptor = std::exchange(m_descriptor, -1);
    // Interrupted or not, the descriptor is gone.
    return descriptor >= 0 && (::close(descriptor) == 0 || errno == EINTR);
}

std::optional<std::string> readWholeFile(std::string_view path, std::size_t limit) {
    // Opening a pipe would wait for its writer.
    const FileDescriptor file = openPath(path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) return std::nullopt;
    struct stat status;
    if (!isRegularFile(file.get(), status)) return std::nullopt;
    if (static_cast<std::size_t>(status.st_size) > limit) return std::nullopt;

    // One byte more than the file had shows whether it has grown since.
    std::string bytes;
    std::size_t done = 0;
    std::size_t room = static_cast<std::size_t>(status.st_size) + 1;
    for (;;) {
        bytes.resize(room);
        bool failed = false;
        done += readFully(file.get(), bytes.data() + done, room - done, &failed);
        if (failed) return std::nullopt;
        if (done < room) break;
        if (done > limit) return std::nullopt;
        room = done < limit / 2 ? 2 * done : limit + 1;
    }
    bytes.resize(done);
    return bytes;
}

FileDescriptor openForAppend(std::string_view path) { return openPath(path, O_WRONLY | O_CREAT | O_APPEND); }

FileDescriptor openRegularFile(std::string_view path, EOpenRegular how) {
    // What the name stands for is known once it is open: only then is a file emptied, and opening a pipe must not wait.
    const int flags = how == EOpenRegular::readOnly ? O_RDONLY : O_RDWR | O_CREAT;
    FileDescriptor file = openPath(path, flags | O_NONBLOCK);
    struct stat status;
    if (!file.isOpen() || !isRegularFile(file.get(), status)) return FileDescriptor();
    if (how == EOpenRegular::makeEmpty && ::ftruncate(file.get(), 0) != 0) return FileDescriptor();
    return file;
}

std::optional<std::size_t> fileSize(int descriptor) noexcept {
    struct stat status;
    if (::fstat(descriptor, &status) != 0 || status.st_size < 0) return std::nullopt;
    return static_cast<std::size_t>(status.st_size);
}

std::size_t readFully(int descriptor, char* bytes, std::size_t count, bool* failed) noexcept {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = ::read(descriptor, bytes + done, count - done);
        if (got < 0 && errno == EINTR) continue;
        if (got < 0 && failed != nullptr) *failed = true;
        if (got <= 0) break;
        done += static_cast<std::size_t>(got);
    }
    return done;
}

std::size_t writeFully(int descriptor, std::string_view bytes) noexcept {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t put = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (put < 0 && errno == EINTR) continue;
        if (put <= 0) break;
        done += static_cast<std::size_t>(put);
    }
    return done;
}

bool seekFile(int descriptor, std::int64_t offset, ESeekOrigin origin) noexcept {
    static_assert(sizeof(off_t) >= sizeof offset);
    const int whence = origin == ESeekOrigin::start ? SEEK_SET : origin == ESeekOrigin::current ? SEEK_CUR : SEEK_END;
    return ::lseek(descriptor, offset, whence) >= 0;
}

// The standard library's iterator ends the process where memory is wanting for an entry.
std::optional<std::vector<std::string>> regularFileNames(std::string_view path) {
    if (!isUsablePath(path)) return std::nullopt;
    const std::unique_ptr<DIR, int (*)(DIR*)> directory(::opendir(std::string(path).c_str()), &::closedir);
    if (!directory) return std::nullopt;
    std::vector<std::string> names;
    while (errno = 0, true) {
        const dirent* const entry = ::readdir(directory.get());
        if (!entry) break;
        struct stat status;
        if (::fstatat(::dirfd(directory.get()), entry->d_name, &status, 0) == 0 && S_ISREG(status.st_mode))
            names.emplace_back(entry->d_name);
    }
    if (errno != 0) return std::nullopt;
    return names;
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
