// brindle csv: the records of a delimited file, or the file in the other dialect. What the rules for such files drop is
// told on standard error, as far as it can be seen in the bytes that are read or the characters that are written.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "ZBLCore/I18NEncoding.h"

#include "AQU_csvFile_v2.h"

#include "Command.h"
#include "CommandLine.h"
#include "Diagnostic.h"
#include "Files.h"

namespace brindle_tool {
namespace {

constexpr std::size_t kOutputPiece = 1 << 20;

struct Options {
    std::string file;
    std::string target;
    bool json = false;
};

using Record = std::vector<I18NString>;

I18NString ToName(const std::string& file) { return I18NString(std::string_view(file)); }

void Note(const std::string& file, const std::string& what) { Show({Printable(file), "note: " + what}); }

bool IsCommaFile(const std::string& file) {
    std::string extension = file.substr(file.size() - std::min<std::size_t>(file.size(), 4));
    for (char& byte : extension)
        if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte - 'A' + 'a');
    return extension == ".csv";
}

struct Mark {
    std::string_view bytes;
    std::size_t unit;
    bool isBigEndian;
};

constexpr Mark kMarks[] = {{{"\xFF\xFE\0\0", 4}, 4, false},
                           {{"\0\0\xFE\xFF", 4}, 4, true},
                           {"\xFF\xFE", 2, false},
                           {"\xFE\xFF", 2, true},
                           {"", 1, false}};

// The first line, from 1, that ends in a line feed without a carriage return in front of it; 0 if there is none. A
// line feed is a code unit that begins with the byte and, if it has a second one, a zero.
std::uint64_t FirstBareLineFeed(std::istream& stream, std::size_t unit) {
    std::string current, last;
    std::uint64_t line = 1;
    for (std::istreambuf_iterator<char> at(stream), end; at != end; ++at) {
        current += *at;
        if (current.size() < unit) continue;
        if (current[0] == '\n' && (unit == 1 || current[1] == '\0')) {
            if (last != std::string_view("\r\0\0", unit)) return line;
            ++line;
        }
        last.swap(current);
        current.clear();
    }
    return 0;
}

void NoteWhatIsLost(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    char bytes[4];
    stream.read(bytes, sizeof bytes);
    const std::string_view start(bytes, static_cast<std::size_t>(stream.gcount()));
    const bool isCommaFile = IsCommaFile(file);
    if (!isCommaFile && start.size() < sizeof bytes) {
        if (!start.empty() && start != "\xFF\xFE")
            Note(file, "a tab-separated file of fewer than four bytes is read as empty");
        return;
    }
    const Mark& mark =
        isCommaFile ? std::end(kMarks)[-1]
                    : *std::ranges::find_if(kMarks, [&start](const Mark& row) { return start.starts_with(row.bytes); });
    if (mark.isBigEndian) Note(file, "the mark says big-endian, the text is read as little-endian");
    stream.clear();
    stream.seekg(static_cast<std::streamoff>(mark.bytes.size()));
    if (const std::uint64_t line = FirstBareLineFeed(stream, mark.unit))
        Note(file, "line " + std::to_string(line) + " ends in a bare line feed; such a line loses its last character");
}

class Writer {
public:
    explicit Writer(const std::string& file)
        : m_name(file), m_encoding(IsCommaFile(file) ? I18NGetPlatformDefaultEncoding() : nullptr),
          m_file(ToName(file), "w") {}

    void Put(const Record& record) {
        ++m_count;
        if (!m_isNoted && !std::ranges::all_of(record, [this](const I18NString& field) { return IsKept(field); })) {
            m_isNoted = true;
            const std::string encoding = m_encoding == nullptr ? "" : m_encoding;
            Note(m_name, "record " + std::to_string(m_count) +
                             (m_encoding == nullptr ? " has characters beyond 16 bits; such a record is cut short"
                                                    : " has characters that " + encoding + " lacks"));
        }
        m_file.Put(record);
    }

private:
    bool IsKept(const I18NString& field) const {
        if (field.isAscii()) return true;
        if (m_encoding == nullptr)
            return std::ranges::none_of(field.bytes(), [](char byte) { return (byte & '\xF0') == '\xF0'; });
        const std::string encoded = field.encode(m_encoding);
        return I18NString(encoded.data(), encoded.size(), m_encoding) == field;
    }

    std::string m_name;
    const char* m_encoding; // null for UTF-16
    AQU_csvFile_v2 m_file;
    std::uint64_t m_count = 0;
    bool m_isNoted = false;
};

void Convert(AQU_csvFile_v2& source, const Options& options) {
    RequireAnotherFile(options.target, options.file);
    RequireRegularFile(options.target, "ab");
    try {
        Writer target(options.target);
        for (Record record; source.Get(record); record.clear())
            target.Put(record);
    } catch (...) {
        DiscardFile(options.target);
        throw;
    }
}

void List(AQU_csvFile_v2& source, bool isJson) {
    std::string text = isJson ? "[" : "";
    bool isFirst = true;
    for (Record record; source.Get(record); record.clear(), isFirst = false) {
        if (isJson) text += isFirst ? "[" : ",\n[";
        for (const I18NString& field : record) {
            if (&field != record.data()) text += isJson ? ',' : '\t';
            text += nlohmann::json(field.bytes()).dump();
        }
        text += isJson ? ']' : '\n';
        if (text.size() < kOutputPiece) continue;
        WriteOutput(text);
        text.clear();
    }
    WriteOutput(text + (isJson ? "]\n" : ""));
}

EExitStatus Csv(const Options& options) {
    RequireRegularFile(options.file, "rb");
    AQU_csvFile_v2 source(ToName(options.file), "r");
    NoteWhatIsLost(options.file);
    if (options.target.empty()) {
        List(source, options.json);
    } else {
        Convert(source, options);
    }
    return kSuccess;
}

} // namespace

Action DeclareCsv(CLI::App& parser) {
    const auto options = std::make_shared<Options>();
    AddText(parser, "FILE", options->file, "", "NAME.csv is comma-separated, any other name tab-separated Unicode")
        ->option_text(" ")
        ->required()
        ->check(RequireName);
    CLI::Option* const target =
        AddText(parser, "--to", options->target, "FILE", "write the records to FILE, in the dialect that its name says")
            ->check(RequireName);
    parser.add_flag("--json", options->json, "give the records as JSON, an array of arrays")->excludes(target);
    return [options] { return Csv(*options); };
}

} // namespace brindle_tool
