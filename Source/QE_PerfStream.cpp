// The performance file as a stream of bytes.
#include "QE_PerfStream.h"

#include <cerrno>
#include <cstdint>

namespace {

// "x" creates the file or fails, so that no other process's file and no link planted in the directory is written to;
// "e" keeps it from programs that the process starts.
constexpr const char* kCreateNew = "wxe";

} // namespace

QE_PerfStream::QE_PerfStream(std::string_view stem, std::string_view extension) {
    if (stem.find('\0') != std::string_view::npos) return;
    for (std::uint64_t number = 0;; ++number) {
        m_path = stem;
        if (number != 0) m_path += std::to_string(number);
        m_path += extension;
        m_file.reset(std::fopen(m_path.c_str(), kCreateNew));
        if (m_file != nullptr || errno != EEXIST) return;
    }
}

void QE_PerfStream::Write(std::string_view text) noexcept {
    if (m_file == nullptr) return;
    const std::size_t written = std::fwrite(text.data(), 1, text.size(), m_file.get());
    if (written != text.size() || std::fflush(m_file.get()) != 0) m_file.reset();
}
