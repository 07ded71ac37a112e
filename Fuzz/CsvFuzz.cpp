// Delimited files: of the input, the first byte chooses the encoding, the rest is what stands behind the mark.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PlatformHooks.h"
#include "ZBLCore/I18NEncoding.h"

#include "AQU_csvFile_v2.h"

#include "FuzzCheck.h"
#include "Support/TemporaryDirectory.h"

namespace brindle_fuzz {
namespace {

using Record = std::vector<I18NString>;

struct Form {
    const char* file;
    std::string_view mark;
    const char* encoding;
    std::size_t unit;
    char separator;
};

constexpr std::array<Form, 5> kForms = {{{"fuzz.csv", "", "utf-8", 1, ','},
                                         {"fuzz.csv", "", "windows-1252", 1, ','},
                                         {"fuzz.txt", "\xEF\xBB\xBF", "utf-8", 1, '\t'},
                                         {"fuzz.txt", "\xFF\xFE", "utf-16", 2, '\t'},
                                         {"fuzz.txt", {"\xFF\xFE\0\0", 4}, "utf-32", 4, '\t'}}};

std::vector<Record> ReadAll(const I18NString& path) {
    std::vector<Record> records;
    AQU_csvFile_v2 file(path, "r");
    for (;;) {
        const bool isAtEnd = file.Eof();
        Record record;
        // An end that was told moves back by one byte, so nothing more is asked of this file.
        if (isAtEnd) return records;
        Require(file.Get(record), "there is a record unless the end was told");
        records.push_back(std::move(record));
    }
}

// The file's lines, found in one piece: each ends at a whole line feed, whose second byte alone is looked at.
std::vector<std::string> Lines(std::string_view bytes, std::size_t unit) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < bytes.size(); at += unit) {
        if (bytes[at] != '\n') continue;
        if (unit > 1 && (at + 1 >= bytes.size() || bytes[at + 1] != '\0')) continue;
        lines.emplace_back(bytes.substr(begin, at - begin > unit ? at - begin - unit : 0));
        begin = at + unit;
    }
    if (begin >= bytes.size()) return lines;
    std::string_view last = bytes.substr(begin);
    if (last.size() % unit == 0 && last.substr(last.size() - unit) == std::string_view("\r\0\0", unit))
        last.remove_suffix(unit);
    lines.emplace_back(last);
    return lines;
}

// By code points, with the state as it is told: whether the text so far is outside of quotes, and the quotes since the
// last separator.
Record Split(const I18NString& line, char separator) {
    Record fields;
    std::u32string field;
    bool atBoundary = true;
    int quotes = 0;
    const auto end = [&fields, &field] {
        std::u32string text = field;
        if (!text.empty() && text.back() == U'"') {
            text.pop_back();
            if (!text.empty()) text.erase(0, 1);
            for (std::size_t at = 0; (at = text.find(U"\"\"", at)) != text.npos; ++at)
                text.erase(at, 1);
        }
        I18NString& made = fields.emplace_back();
        for (const char32_t codePoint : text)
            made.append(codePoint);
        field.clear();
    };
    for (const I18NCodePoint codePoint : line) {
        if (codePoint == U'"') ++quotes;
        if (codePoint != static_cast<unsigned char>(separator)) {
            field += codePoint;
            continue;
        }
        atBoundary = atBoundary ? quotes % 2 == 0 : quotes % 2 == 1;
        quotes = 0;
        if (atBoundary) {
            end();
        } else {
            field += codePoint;
        }
    }
    end();
    return fields;
}

bool IsWide(const Record& record) {
    for (const I18NString& field : record)
        for (const I18NCodePoint codePoint : field)
            if (codePoint > 0xFFFF) return true;
    return false;
}

void Run(const Form& form, std::string_view bytes) {
    brindle_platform::setDefaultEncoding(form.encoding);
    static const brindle_test::TemporaryDirectory directory;
    const auto write = [&form](std::string_view text) {
        return directory.Write(form.file, std::string(form.mark).append(text));
    };
    const I18NString name{std::string_view(write(bytes))};
    // Four bytes decide, and must say what the mark does.
    const bool isTab = form.separator == '\t';
    if (isTab && form.mark.size() + bytes.size() < 4) return;
    if (form.unit == 2 && bytes.starts_with(std::string_view("\0\0", 2))) return;

    const std::vector<Record> records = ReadAll(name);
    const std::vector<std::string> lines = Lines(bytes, form.unit);
    Require(records.size() == lines.size(), "a record for each line");
    for (std::size_t at = 0; at < lines.size(); ++at)
        Require(records[at] == Split(I18NString(lines[at].data(), lines[at].size(), form.encoding), form.separator),
                "a line's fields are those of the walk by code points");

    // What was read comes back from a file of the same form, but for what UTF-16 cuts short.
    std::vector<Record> expected = {{"first"}};
    write(I18NString("first\r\n").encode(form.encoding));
    {
        AQU_csvFile_v2 file(name, "a");
        for (const Record& record : records) {
            if (form.unit == 2 && IsWide(record)) continue;
            file.Put(record);
            expected.push_back(record);
        }
    }
    Require(ReadAll(name) == expected, "records come back");
}

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brindle_fuzz;
    if (size < 1) return -1;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    Run(kForms[data[0] % kForms.size()], input.substr(1));
    return 0;
}
