// The parser over Expat. Expat gets the input in one piece, read or copied into its own buffer: fed in portions it
// would scan a long token again for each of them. Handlers are called by C code, so an exception in one is kept, stops
// the run and goes on behind it.
#include "ZBLIDOM/ZBLIDOM_Parser.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include <expat.h>

#include "OS/FileSystem.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"
#include "ZBLIDOM/ZBLIDOM_Tree.h"

using zblidom::Access;
using zblidom::ContainerData;
using zblidom::ElementData;
using zblidom::Tree;

namespace {

// Code points of the bytes 0x80 to 0x9F in Windows-1252; -1 where there is none, which in a document is an error,
// though the text type lets such a byte through.
constexpr std::array<int, 32> kWindows1252 = {0x20AC, -1,     0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                              0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, -1,     0x017D, -1,
                                              -1,     0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                              0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, -1,     0x017E, 0x0178};

constexpr auto kMaxBytes = static_cast<std::size_t>(ZBLIDOM_Parser::kMaxInputBytes);

enum class Mark { none, utf8, utf16LittleEndian, utf16BigEndian };

struct Fault {
    std::string text;
    long line = 0;
    long column = 0;
};

[[noreturn]] void refuse(const Fault& fault, const I18NString& path, long line) {
    ZBLIDOM_Exception failure(I18NString(std::string_view(fault.text)), path, fault.line, fault.column);
    ZBL_THROW(failure, "Platform/ZBLIDOM/ZBLIDOM_Parser", line, "ZBLIDOM");
}

Mark markOf(std::string_view bytes) noexcept {
    if (bytes.starts_with("\xEF\xBB\xBF")) return Mark::utf8;
    if (bytes.starts_with("\xFF\xFE")) return Mark::utf16LittleEndian;
    if (bytes.starts_with("\xFE\xFF")) return Mark::utf16BigEndian;
    return Mark::none;
}

bool isUtf16(Mark mark) noexcept { return mark == Mark::utf16LittleEndian || mark == Mark::utf16BigEndian; }

// The UTF-16 code units behind the mark.
class Units {
public:
    Units(std::string_view bytes, Mark mark) noexcept
        : m_bytes(bytes.substr(2)), m_low(mark == Mark::utf16BigEndian ? 1 : 0) {}
    std::size_t size() const noexcept { return m_bytes.size() / 2; }
    bool hasRest() const noexcept { return m_bytes.size() % 2 != 0; }
    unsigned operator[](std::size_t i) const noexcept { return byte(2 * i + m_low) | byte(2 * i + 1 - m_low) << 8; }

private:
    unsigned byte(std::size_t i) const noexcept { return static_cast<unsigned char>(m_bytes[i]); }

    std::string_view m_bytes;
    std::size_t m_low;
};

bool isWhiteSpace(unsigned unit) noexcept { return unit == ' ' || unit == '\t' || unit == '\n' || unit == '\r'; }

bool isBlank(std::string_view bytes, Mark mark) noexcept {
    if (!isUtf16(mark)) return bytes.find_first_not_of(" \t\n\r", mark == Mark::utf8 ? 3 : 0) == std::string_view::npos;
    const Units units(bytes, mark);
    for (std::size_t i = 0; i < units.size(); ++i)
        if (!isWhiteSpace(units[i])) return false;
    return !units.hasRest();
}

// Expat takes any two units of which the first is a high surrogate for a pair, and swallows what the second was.
std::optional<Fault> findLoneSurrogate(std::string_view bytes, Mark mark) {
    const Units units(bytes, mark);
    long line = 1;
    long column = 1;
    for (std::size_t i = 0; i < units.size(); ++i, ++column) {
        const unsigned unit = units[i];
        if (unit == '\n' || (unit == '\r' && !(i + 1 < units.size() && units[i + 1] == '\n'))) {
            ++line;
            column = 0;
        } else if (unit >= 0xD800 && unit <= 0xDFFF) {
            const unsigned next = i + 1 < units.size() ? units[i + 1] : 0;
            if (unit >= 0xDC00 || next < 0xDC00 || next > 0xDFFF) return Fault{"lone surrogate", line, column};
            ++i;
        }
    }
    return std::nullopt;
}

bool beginsWith(const char* name, std::string_view lower) noexcept {
    for (const char c : lower) {
        const char n = *name++;
        if ((n >= 'A' && n <= 'Z' ? n - 'A' + 'a' : n) != c) return false;
    }
    return true;
}

// Of the characters from U+0080 to U+00BF a name may have U+00B7 alone. Where the encoding has one byte a character,
// Expat takes others too, with which nobody could read again what is written.
bool isName(const char* name) noexcept {
    while ((name = std::strchr(name, '\xC2')) != nullptr)
        if (*++name != '\xB7') return false;
    return true;
}

// One run over one input. Elements that are read hang in the document from the start.
class Reader {
public:
    explicit Reader(Tree& tree);
    // Room for the input, what was in it before is lost.
    char* buffer(std::size_t size);
    // The fault that was found in the first bytes of the buffer; none if the document stands.
    std::optional<Fault> run(std::string_view bytes);

private:
    static Reader& self(void* data) noexcept { return *static_cast<Reader*>(data); }
    static void onDeclaration(void*, const XML_Char* version, const XML_Char* encoding, int standalone);
    static void onDoctype(void*, const XML_Char* name, const XML_Char* systemId, const XML_Char* publicId,
                          int internal);
    static int onEncoding(void*, const XML_Char* name, XML_Encoding* encoding);
    static void onStart(void*, const XML_Char* name, const XML_Char** attributes);
    static void onEnd(void*, const XML_Char* name);
    static void onText(void*, const XML_Char* bytes, int count);
    static void onStartCdata(void*);
    static void onEndCdata(void*);

    // Runs one handler's work, unless the run has been stopped: Expat may still call a handler then.
    template <typename Work>
    void guarded(Work work) noexcept;
    void openElement(const char* name, const char** attributes);
    void flushText();
    Fault faultHere(const char* text) const;
    void stop(const char* text);

    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> m_expat;
    Tree& m_tree;
    Mark m_mark = Mark::none;
    ContainerData* m_open;
    int m_depth = 0;
    std::string m_text; // what has come since the last node
    bool m_stopped = false;
    std::optional<Fault> m_fault;
    std::exception_ptr m_failure;
};

Reader::Reader(Tree& tree)
    : m_expat(XML_ParserCreate(nullptr), &XML_ParserFree), m_tree(tree), m_open(&tree.document()) {
    if (!m_expat) throw std::bad_alloc();
    XML_Parser expat = m_expat.get();
    XML_SetUserData(expat, this);
    XML_SetXmlDeclHandler(expat, onDeclaration);
    XML_SetStartDoctypeDeclHandler(expat, onDoctype);
    XML_SetUnknownEncodingHandler(expat, onEncoding, nullptr);
    XML_SetElementHandler(expat, onStart, onEnd);
    XML_SetCharacterDataHandler(expat, onText);
    XML_SetCdataSectionHandler(expat, onStartCdata, onEndCdata);
}

char* Reader::buffer(std::size_t size) {
    void* const room = XML_GetBuffer(m_expat.get(), static_cast<int>(std::max<std::size_t>(size, 1)));
    if (!room) throw std::bad_alloc();
    return static_cast<char*>(room);
}

std::optional<Fault> Reader::run(std::string_view bytes) {
    m_mark = markOf(bytes);
    if (isBlank(bytes, m_mark)) return std::nullopt;
    if (m_mark == Mark::none && bytes.substr(0, 2).find('\0') != std::string_view::npos)
        return Fault{"UTF-16 without a byte-order mark", 1, 1};
    if (isUtf16(m_mark))
        if (std::optional<Fault> fault = findLoneSurrogate(bytes, m_mark)) return fault;
    XML_Parser expat = m_expat.get();
    const XML_Status status = XML_ParseBuffer(expat, static_cast<int>(bytes.size()), XML_TRUE);
    if (m_failure) std::rethrow_exception(m_failure);
    if (m_fault || status == XML_STATUS_OK) return m_fault;
    const XML_Error error = XML_GetErrorCode(expat);
    if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
    return faultHere(XML_ErrorString(error));
}

template <typename Work>
void Reader::guarded(Work work) noexcept {
    if (m_stopped) return;
    try {
        work();
    } catch (...) {
        m_failure = std::current_exception();
        m_stopped = true;
        XML_StopParser(m_expat.get(), XML_FALSE);
    }
}

Fault Reader::faultHere(const char* text) const {
    const auto line = static_cast<long>(XML_GetCurrentLineNumber(m_expat.get()));
    const auto charactersBefore = static_cast<long>(XML_GetCurrentColumnNumber(m_expat.get()));
    // Expat counts the byte-order mark as a character of the first line.
    return {text, line, charactersBefore + (line == 1 && m_mark != Mark::none ? 0 : 1)};
}

void Reader::stop(const char* text) {
    m_fault = faultHere(text);
    m_stopped = true;
    XML_StopParser(m_expat.get(), XML_FALSE);
}

void Reader::onDeclaration(void* data, const XML_Char*, const XML_Char* encoding, int) {
    Reader& reader = self(data);
    reader.guarded([&] {
        if (!encoding || reader.m_mark == Mark::none) return;
        if (!beginsWith(encoding, isUtf16(reader.m_mark) ? "utf-16" : "utf-8"))
            reader.stop("the encoding declared is not that of the byte-order mark");
    });
}

// It is called before anything inside the declaration is read.
void Reader::onDoctype(void* data, const XML_Char*, const XML_Char*, const XML_Char*, int) {
    Reader& reader = self(data);
    reader.guarded([&] { reader.stop("a document type declaration is not allowed"); });
}

int Reader::onEncoding(void*, const XML_Char* name, XML_Encoding* encoding) {
    constexpr std::string_view known = "windows-1252";
    if (!beginsWith(name, known) || name[known.size()] != '\0') return XML_STATUS_ERROR;
    for (int i = 0; i < 256; ++i)
        encoding->map[i] = i >= 0x80 && i < 0xA0 ? kWindows1252[static_cast<std::size_t>(i - 0x80)] : i;
    encoding->data = nullptr;
    encoding->convert = nullptr;
    encoding->release = nullptr;
    return XML_STATUS_OK;
}

void Reader::onStart(void* data, const XML_Char* name, const XML_Char** attributes) {
    Reader& reader = self(data);
    reader.guarded([&] { reader.openElement(name, attributes); });
}

void Reader::openElement(const char* name, const char** attributes) {
    if (m_depth == ZBLIDOM_Parser::kMaxDepth) return stop("more than 512 nested elements");
    if (XML_GetSpecifiedAttributeCount(m_expat.get()) > 2 * ZBLIDOM_Parser::kMaxAttributes)
        return stop("more than 1000000 attributes of one element");
    flushText();
    bool areNames = isName(name);
    ElementData* element = m_tree.makeElement(name);
    for (; *attributes; attributes += 2) {
        areNames = areNames && isName(attributes[0]);
        m_tree.addAttribute(*element, attributes[0], attributes[1]);
    }
    if (!areNames) return stop(XML_ErrorString(XML_ERROR_INVALID_TOKEN));
    zblidom::append(*m_open, *element);
    m_open = element;
    ++m_depth;
}

void Reader::onEnd(void* data, const XML_Char*) {
    Reader& reader = self(data);
    reader.guarded([&] {
        reader.flushText();
        reader.m_open = reader.m_open->parent;
        --reader.m_depth;
    });
}

void Reader::onText(void* data, const XML_Char* bytes, int count) {
    Reader& reader = self(data);
    reader.guarded([&] { reader.m_text.append(bytes, static_cast<std::size_t>(count)); });
}

void Reader::onStartCdata(void* data) {
    Reader& reader = self(data);
    reader.guarded([&] { reader.flushText(); });
}

void Reader::onEndCdata(void* data) {
    Reader& reader = self(data);
    reader.guarded([&] {
        zblidom::append(*reader.m_open, *reader.m_tree.makeText(ZBLIDOM_CDATA_SECTION_NODE, reader.m_text));
        reader.m_text.clear();
    });
}

void Reader::flushText() {
    if (m_text.empty()) return;
    zblidom::append(*m_open, *m_tree.makeText(ZBLIDOM_TEXT_NODE, m_text));
    m_text.clear();
}

Tree& emptied(const ZBLIDOM_Document& document, const I18NString& path) {
    if (document.isNull()) refuse({"there is no document to read into"}, path, 265);
    Tree& tree = *Access::tree(document);
    tree.clear();
    return tree;
}

// What `fill` puts into the buffer of the reader, and answers, becomes the content of the tree.
template <typename Fill>
void build(Tree& tree, const I18NString& path, const Fill& fill) {
    std::optional<Fault> fault;
    try {
        Reader reader(tree);
        const std::string_view bytes = fill(reader);
        fault = reader.run(bytes);
    } catch (...) {
        tree.clear();
        throw;
    }
    if (!fault) return;
    tree.clear();
    refuse(*fault, path, 296);
}

// The whole file in the reader's buffer; once more from its start if it has grown meanwhile.
std::string_view readInto(Reader& reader, int file, const I18NString& path) {
    for (std::optional<std::size_t> size; (size = brindle_platform::fileSize(file)) && *size <= kMaxBytes;) {
        char* const bytes = reader.buffer(*size);
        bool failed = !brindle_platform::seekFile(file, 0, brindle_platform::ESeekOrigin::start);
        const std::size_t count = brindle_platform::readFully(file, bytes, *size, &failed);
        if (failed) break;
        if (count < *size || brindle_platform::fileSize(file) == size) return {bytes, count};
    }
    refuse({"not a readable file of at most 1073741824 bytes"}, path, 307);
}

} // namespace

ZBLIDOM_Parser::ZBLIDOM_Parser(int) noexcept {}

void ZBLIDOM_Parser::parse(const I18NString& path, ZBLIDOM_Document& into) {
    Tree& tree = emptied(into, path);
    const brindle_platform::FileDescriptor file =
        brindle_platform::openRegularFile(path.bytes(), brindle_platform::EOpenRegular::readOnly);
    if (!file.isOpen()) refuse({"not a readable file of at most 1073741824 bytes"}, path, 307);
    build(tree, path, [&](Reader& reader) { return readInto(reader, file.get(), path); });
}

void ZBLIDOM_Parser::parseText(std::string_view bytes, ZBLIDOM_Document& into) {
    const I18NString noPath;
    Tree& tree = emptied(into, noPath);
    if (bytes.size() > kMaxBytes) refuse({"more than 1073741824 bytes"}, noPath, 296);
    build(tree, noPath, [bytes](Reader& reader) {
        char* const buffer = reader.buffer(bytes.size());
        return std::string_view(buffer, bytes.copy(buffer, bytes.size()));
    });
}
