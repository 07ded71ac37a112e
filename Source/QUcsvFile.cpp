// Reading scans raw bytes for line feeds, a block at a time, and turns a whole line into text before it takes that
// apart. A separator ends a field if the line has an even number of double quotes in front of it; it is found in UTF-8,
// where no other character holds its byte. Lines that are ASCII are taken apart where they lie in the buffer.
//
// The buffer's front is always a place where a line begins, so a code unit of a wide encoding begins at each multiple
// of its size. Lengths count, not terminators: zero bytes are characters.
#include "AQU_csvFile_v2.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "ZBLCore/I18NEncoding.h"

#include "AQE_TextUtilities.h"
#include "QEException.h"

#include "QEMessageNumbers.h"
#include "QEThrow.h"

namespace {

constexpr long kBlockBytes = 512;
constexpr std::size_t kMaxLineBytes = 0x7FFFFFFF - 1023;
// Behind the longest line there is room for a block, which is read to see that it has ended.
constexpr std::size_t kMaxCapacity = kMaxLineBytes + kBlockBytes + 1;

constexpr const char* kUtf8 = "utf-8";
constexpr const char* kUtf16 = "utf-16";
constexpr const char* kUtf32 = "utf-32";

constexpr char kQuote = '"';
constexpr char kMark[] = {'\xFF', '\xFE'};

// From where ZBLFmFile64::Seek counts.
constexpr int kStart = 0;
constexpr int kCurrent = 1;
constexpr int kEnd = 2;

enum EOpenKind { kNewFile = 2, kExistingFile = 3 };

struct OpenMode {
    const char* name;
    EOpenKind kind;
    bool readOnly;
    bool append;
};

constexpr OpenMode kModes[] = {
    {"r", kExistingFile, true, false},  {"r+", kExistingFile, false, false}, {"a", kExistingFile, false, true},
    {"a+", kExistingFile, false, true}, {"w", kNewFile, false, false},       {"w+", kNewFile, false, false},
};

const OpenMode* FindMode(std::string_view name) {
    const auto* const found = std::ranges::find(kModes, name, &OpenMode::name);
    return found == std::end(kModes) ? nullptr : found;
}

struct Dialect {
    std::string_view mark;
    const char* encoding;
};

// The longer of two marks with the same start comes first; the byte order isn't kept.
constexpr Dialect kDialects[] = {
    {{"\xFF\xFE\0\0", 4}, kUtf32}, {{"\0\0\xFE\xFF", 4}, kUtf32}, {"\xFF\xFE", kUtf16},
    {"\xFE\xFF", kUtf16},          {"\xEF\xBB\xBF", kUtf8},       {"", kUtf8},
};
constexpr std::size_t kLongestMark = 4;

using Word = std::uint64_t;

constexpr Word Repeated(char byte) { return static_cast<unsigned char>(byte) * Word{0x0101010101010101}; }

// The top bit of each byte of the word that is zero.
constexpr Word ZeroBytes(Word word) {
    constexpr Word low = Repeated(0x7F);
    return ~(((word & low) + low) | word | low);
}

template <class Unit>
Word Load(const char* at) {
    Unit unit;
    std::memcpy(&unit, at, sizeof unit);
    return unit;
}

// The first `count` bytes, at most eight, in memory's order from the word's low end on, and zeros behind them. The
// pieces overlap, so that there is no loop.
Word LoadWord(const char* at, std::size_t count) {
    if constexpr (std::endian::native == std::endian::big) {
        Word word = 0;
        for (std::size_t byte = 0; byte < std::min(count, sizeof word); ++byte)
            word |= Word{static_cast<unsigned char>(at[byte])} << 8 * byte;
        return word;
    }
    if (count >= 8) return Load<std::uint64_t>(at);
    if (count >= 4) return Load<std::uint32_t>(at) | Load<std::uint32_t>(at + count - 4) << 8 * (count - 4);
    if (count == 0) return 0;
    return Load<std::uint8_t>(at) | Load<std::uint8_t>(at + count / 2) << 8 * (count / 2) |
           Load<std::uint8_t>(at + count - 1) << 8 * (count - 1);
}

// Writes all eight bytes of a word as LoadWord has them.
void StoreWord(char* at, Word word) {
    if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
    std::memcpy(at, &word, sizeof word);
}

// What ends or begins a part of a line: the separator and the double quote. Neither is a zero byte.
class Stops {
public:
    explicit Stops(char separator) : m_separator(Repeated(separator)) {}

    // The top bit of each byte that is a stop.
    Word In(Word word) const { return ZeroBytes(word ^ m_separator) | ZeroBytes(word ^ Repeated(kQuote)); }

    bool AreIn(std::string_view text) const {
        Word found = 0;
        for (std::size_t at = 0; at < text.size(); at += sizeof found)
            found |= In(LoadWord(text.data() + at, text.size() - at));
        return found != 0;
    }

private:
    Word m_separator;
};

bool IsAscii(std::string_view bytes) {
    unsigned char all = 0;
    for (const char byte : bytes)
        all |= static_cast<unsigned char>(byte);
    return all < 0x80;
}

std::size_t FirstCharacterSize(std::string_view text) {
    std::size_t size = 1;
    while (size < text.size() && (text[size] & '\xC0') == '\x80')
        ++size;
    return size;
}

// A field that ends in a double quote loses that and its first character, whatever it is, and of each pair of double
// quotes in between one.
void AppendField(std::string_view field, bool isAscii, std::vector<I18NString>& fields) {
    I18NString& text = fields.emplace_back();
    const auto append = [&text, isAscii](std::string_view piece) {
        if (isAscii) {
            text.appendAscii(piece);
        } else {
            text.appendValidUtf8(piece);
        }
    };
    if (field.ends_with(kQuote)) {
        field.remove_suffix(1);
        if (field.empty()) return;
        field.remove_prefix(FirstCharacterSize(field));
        for (std::size_t pair; (pair = field.find("\"\"")) != field.npos; field.remove_prefix(pair + 2))
            append(field.substr(0, pair + 1));
    }
    append(field);
}

void SplitText(std::string_view text, bool isAscii, char separator, std::vector<I18NString>& fields) {
    const Stops stops(separator);
    std::size_t begin = 0;
    bool atBoundary = true;
    for (std::size_t word = 0; word < text.size(); word += sizeof(Word)) {
        for (Word found = stops.In(LoadWord(text.data() + word, text.size() - word)); found != 0; found &= found - 1) {
            const std::size_t at = word + static_cast<std::size_t>(std::countr_zero(found)) / 8;
            if (text[at] == kQuote) {
                atBoundary = !atBoundary;
            } else if (atBoundary) {
                AppendField(text.substr(begin, at - begin), isAscii, fields);
                begin = at + 1;
            }
        }
    }
    AppendField(text.substr(begin), isAscii, fields);
}

} // namespace

AQU_csvFile_v2::AQU_csvFile_v2(const I18NString& fileName, const char* mode)
    : m_file(std::make_unique<ZBLFmFile64>()), m_mode(mode != nullptr ? mode : ""), m_fileName(fileName) {
    const OpenMode* const known = FindMode(m_mode);
    if (fileName.empty() || known == nullptr) Fail(kQEMsgFileNotOpened, 43);
    if (m_file->Open(fileName, known->kind, known->readOnly) == 0) Fail(kQEMsgFileNotOpened, 51);
    GetFileEncoding(fileName);
    m_unit = m_encoding == kUtf16 ? 2 : m_encoding == kUtf32 ? 4 : 1;
    m_isUtf8 = m_encoding == kUtf8;
    if (known->append) m_file->Seek(0, 0, kEnd);
}

AQU_csvFile_v2::~AQU_csvFile_v2() = default;

void AQU_csvFile_v2::GetFileEncoding(const I18NString& fileName) {
    m_file->Seek(0, 0, kStart);
    const std::string_view name = fileName.bytes();
    std::string extension(name.substr(name.size() - std::min<std::size_t>(name.size(), 4)));
    if (std::string_view(AQE_StrToLower(extension.data())) == ".csv") {
        m_separator = ',';
        m_encoding = I18NGetPlatformDefaultEncoding();
        return;
    }
    m_separator = '\t';
    m_encoding = kUtf16;
    if (FindMode(m_mode)->kind == kNewFile) {
        if (m_file->Write(kMark, sizeof kMark) < static_cast<long>(sizeof kMark)) Fail(kQEMsgFileNotWritten, 86);
        return;
    }
    char bytes[kLongestMark];
    std::size_t count = 0;
    while (count < kLongestMark && m_file->Read(bytes + count, 1) == 1)
        ++count;
    if (count < kLongestMark) {
        // Fails in a file that is only read, which then is at its end.
        m_file->Write(kMark, sizeof kMark);
        return;
    }
    const auto* const dialect = std::ranges::find_if(kDialects, [&bytes](const Dialect& row) {
        return std::string_view(bytes, kLongestMark).starts_with(row.mark);
    });
    m_encoding = dialect->encoding;
    m_file->Seek(static_cast<std::int32_t>(dialect->mark.size()), 0, kStart);
}

bool AQU_csvFile_v2::Get(std::vector<I18NString>& fields) {
    std::size_t scanned = 0;
    for (;;) {
        const auto used = static_cast<std::size_t>(m_used);
        while (scanned < used) {
            const void* const found = std::memchr(m_buffer.get() + scanned, '\n', used - scanned);
            if (found == nullptr) break;
            const auto at = static_cast<std::size_t>(static_cast<const char*>(found) - m_buffer.get());
            if (IsLineEnd(at)) {
                TakeLine(at, fields);
                return true;
            }
            scanned = at + 1;
        }
        scanned = used;
        Reserve(used + kBlockBytes);
        const long count = m_file->Read(m_buffer.get() + used, kBlockBytes);
        if (count == 0) break;
        m_used += static_cast<std::int32_t>(count);
    }
    if (m_used == 0) return false;
    TakeRest(fields);
    return true;
}

// Whether the line feed byte at the offset is a line feed: in a wide encoding it begins a code unit, and the byte
// behind it, which may not have been read yet, is zero.
bool AQU_csvFile_v2::IsLineEnd(std::size_t offset) {
    if (m_unit == 1) return true;
    if (offset % m_unit != 0) return false;
    if (offset + 1 < static_cast<std::size_t>(m_used)) return m_buffer[offset + 1] == 0;
    char behind;
    if (m_file->Read(&behind, 1) != 1) return false;
    m_file->Seek(-1, -1, kCurrent);
    return behind == 0;
}

// The code unit in front of the line feed goes without a look at it; an empty line has none.
void AQU_csvFile_v2::TakeLine(std::size_t lineFeed, std::vector<I18NString>& fields) {
    SplitCSVLine({m_buffer.get(), lineFeed - std::min(lineFeed, m_unit)}, fields);

    const auto used = static_cast<std::size_t>(m_used);
    const std::size_t next = lineFeed + m_unit;
    if (next > used) m_file->Seek(static_cast<std::int32_t>(next - used), 0, kCurrent);
    const std::size_t rest = used - std::min(next, used);
    if (rest > 0) std::memmove(m_buffer.get(), m_buffer.get() + next, rest);
    m_used = static_cast<std::int32_t>(rest);
}

// The last line of a file needs no line end, but may have half of one.
void AQU_csvFile_v2::TakeRest(std::vector<I18NString>& fields) {
    std::string_view line(m_buffer.get(), static_cast<std::size_t>(m_used));
    if (line.size() % m_unit == 0 && line.substr(line.size() - m_unit) == std::string_view("\r\0\0", m_unit))
        line.remove_suffix(m_unit);
    SplitCSVLine(line, fields);
    m_used = 0;
}

void AQU_csvFile_v2::SplitCSVLine(std::string_view line, std::vector<I18NString>& fields) const {
    if (m_isUtf8 && IsAscii(line)) {
        SplitText(line, true, m_separator, fields);
        return;
    }
    const I18NString text(line.data(), line.size(), m_encoding.c_str());
    SplitText(text.bytes(), text.isAscii(), m_separator, fields);
}

// Leaves the line in the buffer, first as UTF-8.
void AQU_csvFile_v2::CreateCSVLine(const std::vector<I18NString>& fields) {
    m_used = 0;
    const Stops stops(m_separator);
    std::size_t size = 0;
    for (const I18NString& field : fields) {
        const std::string_view text = field.bytes();
        Reserve(size + 1 + text.size() + sizeof(Word));
        if (&field != fields.data()) m_buffer[size++] = m_separator;
        if (text.size() <= sizeof(Word)) {
            // Most fields are short: looked at and copied in one go.
            const Word word = LoadWord(text.data(), text.size());
            StoreWord(m_buffer.get() + size, word);
            size = stops.In(word) != 0 ? AppendQuoted(text, size) : size + text.size();
        } else if (stops.AreIn(text)) {
            size = AppendQuoted(text, size);
        } else {
            std::memcpy(m_buffer.get() + size, text.data(), text.size());
            size += text.size();
        }
    }
    Reserve(size + 2);
    m_buffer[size++] = '\r';
    m_buffer[size++] = '\n';

    if (!m_isUtf8) {
        const I18NString line = I18NString::fromValidUtf8(std::string(m_buffer.get(), size));
        const std::string encoded = line.encode(m_encoding.c_str());
        size = m_unit == 1 ? encoded.size() : m_unit * static_cast<std::size_t>(line.length());
        Reserve(size);
        std::memcpy(m_buffer.get(), encoded.data(), size);
    }
    m_used = static_cast<std::int32_t>(size);
}

// Answers the line's size with the field behind its first `size` bytes.
std::size_t AQU_csvFile_v2::AppendQuoted(std::string_view field, std::size_t size) {
    Reserve(size + 2 + field.size() + static_cast<std::size_t>(std::ranges::count(field, kQuote)));
    char* at = m_buffer.get() + size;
    *at++ = kQuote;
    for (const char byte : field) {
        if (byte == kQuote) *at++ = kQuote;
        *at++ = byte;
    }
    *at++ = kQuote;
    return static_cast<std::size_t>(at - m_buffer.get());
}

void AQU_csvFile_v2::Put(const std::vector<I18NString>& fields) {
    CreateCSVLine(fields);
    if (m_file->Write(m_buffer.get(), m_used) < m_used) Fail(kQEMsgFileNotWritten, 268);
}

bool AQU_csvFile_v2::Eof() {
    if (m_used > 0) return false;
    char byte;
    const bool isAtEnd = m_file->Read(&byte, 1) != 1;
    m_file->Seek(-1, -1, kCurrent);
    return isAtEnd;
}

// Makes the buffer greater than `byteCount`. It doubles, so that a long line is copied a few times only.
void AQU_csvFile_v2::Reserve(std::size_t byteCount) {
    const auto capacity = static_cast<std::size_t>(m_capacity);
    if (capacity > byteCount) return;
    if (byteCount >= kMaxCapacity) throw std::length_error("line of 2 GiB or more");
    const std::size_t grown = std::min(std::max(2 * capacity, byteCount + kBlockBytes), kMaxCapacity);
    auto buffer = std::make_unique_for_overwrite<char[]>(grown);
    if (capacity > 0) std::memcpy(buffer.get(), m_buffer.get(), capacity);
    m_buffer = std::move(buffer);
    m_capacity = static_cast<std::int32_t>(grown);
}

void AQU_csvFile_v2::Fail(long messageNumber, long line) const {
    QEException failure(ZBLSeverity::error, -1L);
    QEAddMessages(failure, messageNumber, 1, m_fileName);
    QELogAndThrow(failure, "Source/QUcsvFile", line);
}
