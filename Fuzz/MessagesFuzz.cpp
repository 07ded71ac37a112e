// Laws of message catalogues and of messages over whatever lines and parameters. The input is a catalogue and, each
// behind a byte 0xFF, the parameters. What the lines say is read from them once more, by lists of whole lines.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "PlatformHooks.h"
#include "ZBLCore/ZBLMessage.h"
#include "ZBLCore/ZBLMessageLines.h"
#include "ZBLCore/ZBLTextSubstitution.h"

#include "FuzzCheck.h"
#include "Support/TemporaryDirectory.h"

namespace brindle_fuzz {
namespace {

using Texts = std::map<unsigned long, I18NString>;

// A catalogue stays to the end of the process, and all are searched in a row, so only some go through the door, chosen
// by their bytes.
constexpr std::size_t kOneFileOf = 64;
constexpr int kMaxFiles = 2000;

constexpr std::string_view kMark = "\xEF\xBB\xBF";

// Lines without a number of their own.
constexpr std::string_view kOddLines[] = {
    "# 1\tcomment", "",           " 1\tblank", "1", "0x\tno digit", "-1\tsign", "18446744073709551616\tgreat",
    "1 \t\t1\tx",   "\xC3\t\x80", "\\n1\tx"};

std::vector<std::string> Split(std::string_view text, char end) {
    std::vector<std::string> parts;
    for (std::size_t at = 0; at != text.npos;) {
        const std::size_t found = text.find(end, at);
        parts.emplace_back(text.substr(at, found == text.npos ? text.npos : found - at));
        at = found == text.npos ? text.npos : found + 1;
    }
    return parts;
}

std::optional<unsigned long> ExpectedNumber(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    const bool isHexadecimal = text.starts_with("0x");
    if (isHexadecimal) text.erase(0, 2);
    if (text.empty()) return std::nullopt;
    const unsigned long radix = isHexadecimal ? 16 : 10;
    unsigned long number = 0;
    for (const char c : text) {
        const std::size_t digit = std::string_view("0123456789abcdef").find(c);
        if (digit >= radix || number > (std::numeric_limits<unsigned long>::max() - digit) / radix) return std::nullopt;
        number = radix * number + digit;
    }
    return number;
}

I18NString Unescaped(std::string_view line) {
    std::string text;
    while (!line.empty()) {
        std::size_t taken = 2;
        if (line.starts_with("\\n")) {
            text += '\n';
        } else if (line.starts_with("\\t")) {
            text += '\t';
        } else if (line.starts_with("\\\\")) {
            text += '\\';
        } else {
            text += line.front();
            taken = 1;
        }
        line.remove_prefix(taken);
    }
    return I18NString(std::string_view(text));
}

Texts ExpectedTexts(std::string_view content) {
    Texts texts;
    if (content.starts_with(kMark)) content.remove_prefix(kMark.size());
    for (std::string& line : Split(content, '\n')) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const std::size_t tab = line.find('\t');
        if (tab == line.npos) continue;
        if (const std::optional<unsigned long> number = ExpectedNumber(line.substr(0, tab)))
            texts[*number] = Unescaped(line.substr(tab + 1));
    }
    return texts;
}

// From the left: the longest of "%1" to "%16" that stands there.
I18NString ExpectedMessage(const I18NString& pattern, const std::vector<I18NString>& parameters) {
    std::string text;
    std::vector<bool> used(parameters.size());
    for (std::string_view rest = pattern.bytes(); !rest.empty();) {
        std::size_t place = 16;
        while (place > 0 && !rest.starts_with("%" + std::to_string(place)))
            --place;
        if (place > 0 && place <= parameters.size()) {
            text += parameters[place - 1].bytes();
            used[place - 1] = true;
            rest.remove_prefix(place < 10 ? 2 : 3);
        } else {
            text += rest.front();
            rest.remove_prefix(1);
        }
    }
    for (std::size_t index = 0; index < parameters.size(); ++index)
        if (!used[index]) text.append(" [").append(parameters[index].bytes()).append("]");
    return I18NString(std::string_view(text));
}

void RequireTexts(const std::string& content, const Texts& expected, std::string_view law) {
    const ZBLMessageLines lines(content);
    const auto require = [&](unsigned long number) {
        I18NString text("before");
        const auto wanted = expected.find(number);
        Require(lines.findText(number, text) == (wanted != expected.end()), law);
        RequireSame(text.bytes(), wanted == expected.end() ? "before" : wanted->second.bytes(), law);
    };
    require(0);
    require(std::numeric_limits<unsigned long>::max());
    for (const auto& [number, text] : expected)
        for (const unsigned long near : {number - 1, number, number + 1})
            require(near);
}

// The same lines with other ones between them, and with CR LF at their ends.
void RequireLinesApart(std::string_view content, const Texts& texts) {
    const std::string_view mark = content.starts_with(kMark) ? kMark : std::string_view();
    std::string more(mark);
    std::string turned(mark);
    std::size_t odd = content.size();
    for (const std::string& line : Split(content.substr(mark.size()), '\n')) {
        more.append(kOddLines[odd++ % std::size(kOddLines)]).append("\n").append(line).append("\n");
        turned.append(line).append(line.ends_with('\r') ? "\n" : "\r\n");
    }
    RequireTexts(more, texts, "lines without a number change no other line");
    RequireTexts(turned, texts, "a line may end with CR LF");
}

void RequireThroughTheDoor(std::string_view content, const Texts& texts, const std::vector<I18NString>& parameters) {
    static const brindle_test::TemporaryDirectory directory;
    static int fileCount = 0;
    if (std::hash<std::string_view>()(content) % kOneFileOf != 0 || ++fileCount > kMaxFiles) return;
    if (fileCount == 1) brindle_platform::setProgramDirectory(I18NString(std::string_view(directory.Path() + "/bin")));
    const std::string file = "f" + std::to_string(fileCount);
    const std::string path = directory.Write("configuration/messages/" + file + "_en.txt", content);
    const auto format = [&](unsigned long number, const char* locale) {
        ZBLMessage message(I18NString(std::string_view(file)), number);
        for (const I18NString& parameter : parameters)
            message << parameter;
        return message.format(locale);
    };
    for (const auto& [number, text] : texts)
        RequireSame(format(number, "en-us").bytes(), ExpectedMessage(text, parameters).bytes(),
                    "a message is its text with the parameters");
    for (const unsigned long number : {0ul, 7ul}) {
        if (texts.contains(number)) continue;
        std::string expected = file + " 0x" + std::to_string(number);
        for (std::size_t index = 0; index < parameters.size(); ++index)
            expected.append(index == 0 ? " (\"" : ", \"").append(parameters[index].bytes()).append("\"");
        if (!parameters.empty()) expected += ")";
        RequireSame(format(number, "de").bytes(), expected, "a message without a text shows all that it has");
    }
    std::filesystem::remove(path);
}

void Run(std::string_view input) {
    std::vector<std::string> parts = Split(input, '\xFF');
    const std::string content = parts.front();
    std::vector<I18NString> parameters;
    std::vector<const I18NString*> borrowed;
    for (std::size_t at = 1; at < parts.size(); ++at)
        parameters.emplace_back(std::string_view(parts[at]));
    for (const I18NString& parameter : parameters)
        borrowed.push_back(&parameter);

    const Texts texts = ExpectedTexts(content);
    RequireTexts(content, texts, "a number has the text of its last line");
    RequireLinesApart(content, texts);
    for (const auto& [number, text] : texts) {
        const I18NString message = ZBLSubstituteAndAppend(text, borrowed, true);
        RequireSame(message.bytes(), ExpectedMessage(text, parameters).bytes(), "parameters are put into their places");
        for (const I18NString& parameter : parameters)
            Require(message.bytes().find(parameter.bytes()) != std::string_view::npos, "no parameter is lost");
    }
    RequireThroughTheDoor(content, texts, parameters);
}

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    brindle_fuzz::Run(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
