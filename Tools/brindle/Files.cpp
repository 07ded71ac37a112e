#include "Files.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#include "Diagnostic.h"

namespace brindle_tool {
namespace {

struct Closer {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using OwnedFile = std::unique_ptr<std::FILE, Closer>;

std::string Reason(int error) { return std::generic_category().message(error); }

OwnedFile Open(const std::string& file, const char* mode) {
    OwnedFile opened(std::fopen(file.c_str(), mode));
    if (opened == nullptr) throw Failure({Printable(file), "cannot open the file: " + Reason(errno)});
    return opened;
}

std::string ReadAll(std::FILE* file, const std::string& name) {
    std::string bytes;
    std::size_t size = 0;
    while (size <= I18NString::kMaxBytes) {
        bytes.resize(bytes.size() < 65536 ? 65536 : 2 * bytes.size());
        errno = 0;
        size += std::fread(bytes.data() + size, 1, bytes.size() - size, file);
        if (std::ferror(file) != 0) throw Failure({name, "cannot read the file: " + Reason(errno)});
        if (size < bytes.size()) break;
    }
    bytes.resize(size);
    return bytes;
}

} // namespace

Input ReadInput(const std::string& file) {
    const std::string name = Printable(file);
    static bool inputIsUsed = false;
    if (file == "-" && std::exchange(inputIsUsed, true)) throw Failure({name, "standard input is asked for twice"});
    const OwnedFile opened = file == "-" ? nullptr : Open(file, "rb");
    const std::string bytes = ReadAll(opened == nullptr ? stdin : opened.get(), name);
    try {
        return {name, I18NString(std::string_view(bytes))};
    } catch (const std::length_error&) {
        throw Failure({name, "the text is too large, the limit is 2 GiB"});
    }
}

void WriteOutput(std::string_view bytes) {
    errno = 0;
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size() || std::fflush(stdout) != 0)
        throw Failure("cannot write to standard output: " + Reason(errno));
}

void WriteFile(const std::string& file, std::string_view bytes) {
    OwnedFile opened = Open(file, "wb");
    errno = 0;
    bool written = std::fwrite(bytes.data(), 1, bytes.size(), opened.get()) == bytes.size();
    written = std::fclose(opened.release()) == 0 && written;
    if (written) return;
    const int error = errno;
    DiscardFile(file);
    throw Failure({Printable(file), "cannot write the file: " + Reason(error)});
}

void RequireAnotherFile(const std::string& target, const std::string& source) {
    std::error_code failed;
    if (std::filesystem::equivalent(source, target, failed))
        throw Failure({Printable(target), "expected another file than the one that is read"});
}

void DiscardFile(const std::string& file) {
    std::error_code failed;
    const std::filesystem::path itself = std::filesystem::canonical(file, failed);
    if (std::filesystem::is_regular_file(itself, failed)) std::filesystem::remove(itself, failed);
}

void RequireRegularFile(const std::string& file, const char* mode) {
    std::error_code failed;
    const std::filesystem::file_status status = std::filesystem::status(file, failed);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw Failure({Printable(file), "expected a regular file"});
    if (I18NString(std::string_view(file)).bytes() != file)
        throw Failure({Printable(file), "expected a file with a name in UTF-8"});
    Open(file, mode);
}

} // namespace brindle_tool
