#include "ZBLCore/ZBLFmFile64.h"

#include <optional>
#include <string_view>

#include "OS/FileSystem.h"

using namespace brindle_platform;

namespace {

constexpr int kNewFile = 2;
constexpr int kExistingFile = 3;

std::optional<ESeekOrigin> originOf(int number) {
    if (number < 0 || number > 2) return std::nullopt;
    return number == 0 ? ESeekOrigin::start : number == 1 ? ESeekOrigin::current : ESeekOrigin::end;
}

} // namespace

ZBLFmFile64::ZBLFmFile64() noexcept = default;

ZBLFmFile64::~ZBLFmFile64() = default;

int ZBLFmFile64::Open(const I18NString& name, int kind, bool readOnly) {
    m_file.reset();
    if (kind != kNewFile && kind != kExistingFile) return 0;
    const EOpenRegular how = kind == kNewFile ? EOpenRegular::makeEmpty
                             : readOnly       ? EOpenRegular::readOnly
                                              : EOpenRegular::make;
    FileDescriptor opened = openRegularFile(name.bytes(), how);
    if (!opened.isOpen()) return 0;
    m_file = std::make_unique<FileDescriptor>(std::move(opened));
    m_readOnly = readOnly;
    return 1;
}

long ZBLFmFile64::Read(void* bytes, long count) {
    if (m_file == nullptr || count <= 0) return 0;
    const std::size_t done = readFully(m_file->get(), static_cast<char*>(bytes), static_cast<std::size_t>(count));
    return static_cast<long>(done);
}

long ZBLFmFile64::Write(const void* bytes, long count) {
    if (m_file == nullptr || m_readOnly || count <= 0) return 0;
    const std::string_view text(static_cast<const char*>(bytes), static_cast<std::size_t>(count));
    return static_cast<long>(writeFully(m_file->get(), text));
}

int ZBLFmFile64::Seek(std::int32_t low, std::int32_t high, int origin) {
    const std::optional<ESeekOrigin> from = originOf(origin);
    if (m_file == nullptr || !from) return 0;
    const std::int64_t offset = std::int64_t{high} * (std::int64_t{1} << 32) + static_cast<std::uint32_t>(low);
    return seekFile(m_file->get(), offset, *from) ? 1 : 0;
}

int ZBLFmFile64::Close() {
    const std::unique_ptr<FileDescriptor> file = std::move(m_file);
    return file != nullptr && file->close() ? 1 : 0;
}
