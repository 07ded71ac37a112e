#include "MacroFailure.h"

#include <optional>
#include <vector>

#include "PlatformHooks.h"

#include "AQE_TextUtilities.h"
#include "AQM_I_MacroExpander.h"
#include "QEException.h"

namespace brindle_tool {
namespace {

constexpr std::size_t kTokenShown = 40;

// Keeps the log free of the failures that are only provoked to find out about another one.
class QuietLog {
public:
    QuietLog() {
        brindle_platform::setLogSink([](const brindle_platform::LogRecord&) {});
    }
    QuietLog(const QuietLog&) = delete;
    QuietLog& operator=(const QuietLog&) = delete;
    ~QuietLog() { brindle_platform::setLogSink(nullptr); }
};

// What a parse alone tells about a text: its blocks, or the failure if that has a position.
struct Reading {
    std::vector<AQM_I_MacroExpander::PositionInfo> blocks;
    std::optional<QEExceptionExtended> error;
    bool wellFormed = false;
};

Reading Read(const I18NString& text) {
    const QuietLog quiet;
    Reading reading;
    try {
        AQM_I_MacroExpander().GetMacroPositions(text, reading.blocks);
        reading.wellFormed = true;
    } catch (const QEExceptionExtended& error) {
        if (error.GetPosition() > 0) reading.error = error;
    } catch (const ZBLException&) {
        // "Too complex" has no position.
    }
    return reading;
}

// The forms in which plain text protects a '#'.
struct Form {
    const char* name;
    std::string_view opening;
    std::string_view end;
    bool canDouble; // the end doubled is content
};

constexpr Form kForms[] = {
    {"string", "'", "'", true},         {"quoted name", "\"", "\"", true},
    {"bracketed name", "[", "]", true}, {"prompt", "?", "?", false},
    {"comment", "/*", "*/", false},     {"line comment", "--", "", false}}; // ends with the line or the text

const Form* FormAt(std::string_view text, std::size_t at) {
    for (const Form& form : kForms)
        if (text.substr(at).starts_with(form.opening)) return &form;
    return nullptr;
}

// The offset behind the form that opens at `at`; npos if it doesn't end.
std::size_t BehindForm(std::string_view text, std::size_t at, const Form& form) {
    at += form.opening.size();
    if (form.opening == "?") ++at; // the byte behind the mark belongs to the prompt whatever it is
    if (form.opening == "--") {
        at = text.find_first_of("\r\n", at);
        return at == text.npos ? text.size() : at;
    }
    for (; (at = text.find(form.end, at)) != text.npos; at += 2) {
        if (!form.canDouble || !text.substr(at + 1).starts_with(form.end)) return at + form.end.size();
    }
    return text.npos;
}

// Where the plain text from `at` on opens a form that doesn't end, and which it is.
std::pair<std::size_t, const Form*> FindOpenForm(std::string_view text, std::size_t at) {
    while (at < text.size()) {
        const Form* const form = FormAt(text, at);
        const std::size_t behind = form == nullptr ? at + 1 : BehindForm(text, at, *form);
        if (behind == text.npos) return {at, form};
        at = behind;
    }
    return {text.size(), nullptr};
}

// A text that ends in an open form is well formed once that form is closed, and so shows where its last plain text
// begins.
std::string DescribeOpenForm(const I18NString& text) {
    for (const char* const closing : {"'", "\"", "]", "_?", "*/"}) {
        const Reading closed = Read(text + I18NString(closing));
        if (!closed.wellFormed) continue;
        const auto begin = closed.blocks.empty() ? 0 : static_cast<std::size_t>(closed.blocks.back().endPosition) + 1;
        const auto [opening, form] = FindOpenForm(text.bytes(), begin);
        if (form == nullptr) continue;
        return std::string("the ") + form->name + " that begins at " + ToText(FindPlaceOfByte(text, opening)) +
               " does not end";
    }
    return "a string, name, prompt or comment does not end";
}

// Whether the reader failed because the text ended, and not at its last token: with one more blank it gets further.
bool FailedAtEnd(const I18NString& text, const QEExceptionExtended& error) {
    if (error.GetPosition() <= text.size()) return false;
    const Reading further = Read(text + I18NString(" "));
    return further.error && further.error->GetPosition() > error.GetPosition();
}

bool IsNameByte(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return (value >= 'A' && value <= 'Z') || (value >= 'a' && value <= 'z') || (value >= '0' && value <= '9') ||
           value == '_' || value == '.' || value >= 0x80;
}

// The token whose last character begins at `last`: a name as far as it goes back, a string, or the one character.
std::string DescribeToken(std::string_view text, std::size_t last) {
    const char byte = text[last];
    if (byte == '\'' || byte == '"') return "string";
    if (static_cast<unsigned char>(byte) <= ' ' || byte == '\x7f') return "control character or blank";
    std::size_t end = last + 1;
    while (end < text.size() && (text[end] & '\xC0') == '\x80')
        ++end;
    std::size_t begin = last;
    while (IsNameByte(byte) && begin > 0 && IsNameByte(text[begin - 1]))
        --begin;
    return "'" + Printable(text.substr(begin, end - begin), kTokenShown) + "'";
}

std::string DescribeSyntaxError(const I18NString& text, const QEExceptionExtended& error, const Place& place) {
    if (error.GetIsMacro() == 0) return DescribeOpenForm(text);
    if (FailedAtEnd(text, error)) return "the text ends inside a macro block";
    return "unexpected " + DescribeToken(text.bytes(), place.byte) + " in a macro block";
}

// The position lies behind the failing token.
Place PlaceOf(const I18NString& text, const QEExceptionExtended& error) {
    return FindPlaceOfCharacter(text, std::int64_t{error.GetPosition()} - 1);
}

} // namespace

Diagnostic DescribeMacroFailure(const Input& input, const ParameterTable& parameters, const ZBLException& failure) {
    const std::string message = Printable(failure.getMessage().bytes());
    const auto* const located = dynamic_cast<const QEExceptionExtended*>(&failure);
    if (located == nullptr || located->GetPosition() <= 0) return {input.name, message};

    if (const Reading own = Read(input.text); own.error) {
        const Place place = PlaceOf(input.text, *own.error);
        return {input.name + ":" + ToText(place), DescribeSyntaxError(input.text, *own.error, place),
                Excerpt(input.text, place)};
    }
    for (const auto& [name, values] : parameters) {
        for (const I18NString& value : values) {
            if (!AQE_IsMacro(value)) continue;
            const Reading nested = Read(value);
            if (!nested.error || nested.error->getMessage() != failure.getMessage()) continue;
            const Place place = PlaceOf(value, *nested.error);
            return {input.name,
                    "in the value of " + ToText(name) + " at " + ToText(place) + ": " +
                        DescribeSyntaxError(value, *nested.error, place),
                    Excerpt(value, place)};
        }
    }
    return {input.name, "in a value that is itself a macro block: " + message};
}

} // namespace brindle_tool
