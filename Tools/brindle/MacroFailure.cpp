#include "MacroFailure.h"

#include <optional>
#include <vector>

#include "AQE_TextUtilities.h"
#include "AQM_I_MacroExpander.h"
#include "QEException.h"

namespace brindle_tool {
namespace {

constexpr std::size_t kTokenShown = 40;

// The syntax error of the text, if it has one.
std::optional<QEExceptionExtended> SyntaxErrorOf(const I18NString& text) {
    std::vector<AQM_I_MacroExpander::PositionInfo> blocks;
    try {
        AQM_I_MacroExpander().GetMacroPositions(text, blocks);
    } catch (const QEExceptionExtended& error) {
        if (error.GetPosition() > 0) return error;
    } catch (const ZBLException&) {
        // Faults without a position aren't told by this route.
    }
    return std::nullopt;
}

// Whether the reader failed because the text ended, and not at its last token: with one more blank it gets further.
bool FailedAtEnd(const I18NString& text, const QEExceptionExtended& error) {
    if (error.GetPosition() <= text.size()) return false;
    const auto further = SyntaxErrorOf(text + I18NString(" "));
    return further && further->GetPosition() > error.GetPosition();
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
    if (error.GetIsMacro() == 0)
        return "the text ends inside a string, a name in quotes or brackets, a prompt or a comment";
    if (FailedAtEnd(text, error)) return "the text ends inside a macro block";
    return "unexpected " + DescribeToken(text.bytes(), place.byte) + " in a macro block";
}

// The position lies behind the failing token.
Place PlaceOf(const I18NString& text, const QEExceptionExtended& error) {
    return FindPlace(text, std::int64_t{error.GetPosition()} - 1);
}

} // namespace

Diagnostic DescribeMacroFailure(const Input& input, const ParameterTable& parameters, const ZBLException& failure) {
    const std::string message = Printable(failure.getMessage().bytes());
    const auto* const located = dynamic_cast<const QEExceptionExtended*>(&failure);
    if (located == nullptr || located->GetPosition() <= 0) return {input.name, message};

    if (const auto own = SyntaxErrorOf(input.text)) {
        const Place place = PlaceOf(input.text, *own);
        return {input.name + ":" + ToText(place), DescribeSyntaxError(input.text, *own, place),
                Excerpt(input.text, place)};
    }
    for (const auto& [name, values] : parameters) {
        for (const I18NString& value : values) {
            if (!AQE_IsMacro(value)) continue;
            const auto error = SyntaxErrorOf(value);
            if (!error || error->getMessage() != failure.getMessage()) continue;
            const Place place = PlaceOf(value, *error);
            return {input.name,
                    "in the value of " + ToText(name) + " at " + ToText(place) + ": " +
                        DescribeSyntaxError(value, *error, place),
                    Excerpt(value, place)};
        }
    }
    return {input.name, "in a value that is itself a macro block: " + message};
}

} // namespace brindle_tool
