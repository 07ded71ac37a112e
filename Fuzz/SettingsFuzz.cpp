// Laws of the settings file over whatever bytes: which options it sets, what the readers of options answer from it, and
// what is said of a file that is refused. What the file holds is taken from the document once more, and numbers are
// read digit by digit.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Mortise/AUT_I_UserConfiguration.h"
#include "Mortise/SettingsFile.h"
#include "Mortise/TomlParser.h"
#include "PlatformHooks.h"

#include "FuzzCheck.h"
#include "Support/TemporaryDirectory.h"

namespace brindle_fuzz {
namespace {

using brindle_platform::Option;
using brindle_platform::Options;

// Each file that is read leaves a table behind to the end of the process, for which the fuzzer seeks leaks anew, so
// only some go through the door, chosen by their bytes.
constexpr std::size_t kOneFileOf = 64;
constexpr int kMaxFiles = 100000;

constexpr std::size_t kFewDots = 1000;

std::optional<std::int64_t> ExpectedNumber(std::string_view text) {
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    if (text.empty()) return std::nullopt;
    const std::uint64_t limit = std::uint64_t{std::numeric_limits<std::int64_t>::max()} + (isNegative ? 1 : 0);
    std::uint64_t number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return std::nullopt;
        const auto digit = static_cast<std::uint64_t>(c - '0');
        if (number > (limit - digit) / 10) return std::nullopt;
        number = 10 * number + digit;
    }
    return static_cast<std::int64_t>(isNegative ? 0 - number : number);
}

// None if the bytes aren't TOML.
std::optional<Options> ExpectedOptions(std::string_view bytes) {
    toml::table root;
    try {
        root = toml::parse(bytes);
    } catch (const toml::parse_error&) {
        return std::nullopt;
    }
    Options options;
    for (auto&& [section, node] : root) {
        if (!node.is_table()) continue;
        for (auto&& [name, value] : *node.as_table()) {
            if (!value.is_string() && !value.is_integer()) continue;
            const std::string text =
                value.is_string() ? **value.as_string() : std::to_string(value.as_integer()->get());
            options[{std::string(section.str()), std::string(name.str())}] = {I18NString(std::string_view(text)),
                                                                              ExpectedNumber(text)};
        }
    }
    return options;
}

std::string Quoted(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F || c == '"' || c == '\\') {
            quoted.append("\\u00").append({kDigits[byte / 16], kDigits[byte % 16]});
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

// A file that sets the options, a table for each section; numbers as numbers where that changes no digit.
std::string FileOf(const Options& options, std::string_view lineEnd) {
    std::string file;
    const std::string* section = nullptr;
    for (const auto& [key, option] : options) {
        if (section == nullptr || *section != key.first) file.append("[" + Quoted(key.first) + "]").append(lineEnd);
        section = &key.first;
        const std::string text(option.text.bytes());
        const bool isPlain = option.number && std::to_string(*option.number) == text;
        file.append(Quoted(key.second) + " = " + (isPlain ? text : Quoted(text))).append(lineEnd);
    }
    return file;
}

void RequireOptions(const Options& seen, const Options& expected, std::string_view law) {
    const bool same =
        std::equal(seen.begin(), seen.end(), expected.begin(), expected.end(), [](const auto& a, const auto& b) {
            return a.first == b.first && a.second.text == b.second.text && a.second.number == b.second.number;
        });
    if (!same) BreakLaw(law, FileOf(seen, "\n"), FileOf(expected, "\n"));
}

void RequireFault(std::string_view fault, std::string_view bytes) {
    unsigned long place[2] = {0, 0};
    for (unsigned long& number : place) {
        Require(fault.starts_with(':'), "a fault begins with line and column");
        fault.remove_prefix(1);
        const std::size_t end = std::min(fault.find(':'), fault.size());
        const std::optional<std::int64_t> read = ExpectedNumber(fault.substr(0, end));
        Require(read && *read > 0, "line and column count from 1");
        number = static_cast<unsigned long>(*read);
        fault.remove_prefix(end);
    }
    Require(fault.starts_with(": ") && fault.size() > 2, "a fault says what it is");
    Require(place[0] <= static_cast<unsigned long>(std::count(bytes.begin(), bytes.end(), '\n')) + 1,
            "the line is one of the file");
    Require(place[1] <= bytes.size() + 1, "the column is one of the file");
}

// Readers of options answer from a file as from the options; with a fault there is one record, which names the file.
void RequireThroughTheDoor(std::string_view bytes, const Options& options, const std::string& fault) {
    static const brindle_test::TemporaryDirectory directory;
    static const AUT_RefPtr<AUT_I_UserConfiguration> reader = AUT_I_UserConfiguration::Create(1);
    static std::vector<I18NString> records;
    const std::string path = directory.Write("settings.toml", bytes);
    records.clear();
    brindle_platform::setLogSink([](const brindle_platform::LogRecord& record) { records.push_back(record.text); });
    brindle_platform::setUserConfigurationFile(I18NString(std::string_view(path)));
    Require(reader->GetString("no such section", "\n", "none") == "none", "what isn't set has the default");
    if (fault.empty()) {
        Require(records.empty(), "nothing is said of a file without a fault");
    } else {
        const std::string expected = "settings file ignored: " + path + fault;
        Require(records.size() == 1 && records.front() == I18NString(std::string_view(expected)),
                "the record of a fault names file and place");
        Require(reader->GetInteger("QueryEngine", "MacroNesting", -5) == -5, "a file with a fault sets nothing");
    }
    for (const auto& [key, option] : options) {
        const I18NString section{std::string_view(key.first)};
        const I18NString name{std::string_view(key.second)};
        Require(reader->GetString(section, name, "none") == option.text, "an option is its text");
        const std::int64_t number = option.number.value_or(std::numeric_limits<std::int64_t>::min());
        Require(reader->GetInteger(section, name, 7) == (std::in_range<int>(number) ? static_cast<int>(number) : 7),
                "an integer is the text's, or the default");
        Require(reader->GetUnsigned(section, name, 8) ==
                    (std::in_range<unsigned>(number) ? static_cast<unsigned>(number) : 8),
                "an unsigned number is the text's, or the default");
    }
}

void Run(std::string_view bytes) {
    const std::optional<Options> expected = ExpectedOptions(bytes);
    std::string fault;
    const Options options = brindle_platform::readSettings(bytes, fault);
    const auto dots = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '.'));
    if (dots > kFewDots && fault.starts_with(": ")) {
        Require(options.empty(), "a file with too many dots sets nothing");
    } else {
        Require(fault.empty() == expected.has_value(), "what is no TOML has a fault, and nothing else");
        RequireOptions(options, expected.value_or(Options()), "the options are the document's texts and integers");
        if (!fault.empty()) RequireFault(fault, bytes);
    }
    static int fileCount = 0;
    const bool isChosen = std::hash<std::string_view>()(bytes) % kOneFileOf == 0;
    if (isChosen && ++fileCount <= kMaxFiles) RequireThroughTheDoor(bytes, options, fault);
    if (!fault.empty()) return;

    for (const std::string& same :
         {FileOf(options, "\n"), FileOf(options, "\r\n"), std::string(bytes) + "\n# [no] section = 1"}) {
        RequireOptions(brindle_platform::readSettings(same, fault), options, "options come back from a file of them");
        RequireSame(fault, "", "a file of options has no fault");
    }
}

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    brindle_fuzz::Run(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
