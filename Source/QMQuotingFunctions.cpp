// Each function wraps or converts one string; where it takes an array, each string in it.
#include "QMQuotingFunctions.h"

#include "AQE_UrlEncoding.h"

namespace {

using enum AQM_MacroValue::MacroValueType;

I18NString Wrap(const I18NString& opening, const I18NString& closing, const I18NString& text) {
    I18NString wrapped;
    wrapped.reserve(text.bytes().size() + 2);
    QMAppendQuoted(wrapped, text, opening, closing);
    return wrapped;
}

I18NString InApostrophes(const I18NString& text) {
    static const I18NString& apostrophe = *new I18NString("'");
    return Wrap(apostrophe, apostrophe, text);
}

// One string converted, or each string of one array; null for another value.
std::unique_ptr<AQM_MacroValue> ConvertStringOrArray(const AQM_MacroValue* value,
                                                     I18NString (*convert)(const I18NString&)) {
    if (const AQM_MacroValueString* const text = QMAsString(value)) return QMMakeString(convert(text->GetValue()));
    if (const AQM_MacroValueArray* const array = QMAsArray(value)) return QMMapStrings(*array, convert);
    return nullptr;
}

// One string between the marks; nothing between them unless there is one argument; null for another value.
std::unique_ptr<AQM_MacroValue> WrapString(const MF_BuiltIn::Arguments& arguments, const char* opening,
                                           const char* closing) {
    if (arguments.Count() != 1) return QMMakeString(I18NString(opening) + closing);
    const AQM_MacroValueString* const text = QMAsString(arguments[0]);
    return text ? QMMakeString(Wrap(opening, closing, text->GetValue())) : nullptr;
}

} // namespace

MF_SingleQuote::MF_SingleQuote() : MF_BuiltIn("sq", {MVT_String}, MVT_String) {}

std::unique_ptr<AQM_MacroValue> MF_SingleQuote::Call(const Arguments& arguments) const {
    if (arguments.Count() != 1) return QMMakeString("''");
    return ConvertStringOrArray(arguments[0], InApostrophes);
}

MF_DoubleQuote::MF_DoubleQuote() : MF_BuiltIn("dq", {MVT_String}, MVT_String) {}

std::unique_ptr<AQM_MacroValue> MF_DoubleQuote::Call(const Arguments& arguments) const {
    return WrapString(arguments, "\"", "\"");
}

MF_SingleBracket::MF_SingleBracket() : MF_BuiltIn("sb", {MVT_String}, MVT_String) {}

std::unique_ptr<AQM_MacroValue> MF_SingleBracket::Call(const Arguments& arguments) const {
    return WrapString(arguments, "[", "]");
}

MF_UrlEncode::MF_UrlEncode() : MF_BuiltIn("urlencode", {MVT_String}, MVT_String) {}

std::unique_ptr<AQM_MacroValue> MF_UrlEncode::Call(const Arguments& arguments) const {
    if (arguments.Count() != 1) return QMMakeString("''");
    return ConvertStringOrArray(arguments[0], AQE_UrlEncode);
}

MF_Array::MF_Array() : MF_BuiltIn("array", {MVT_String}, MVT_Array) {}

std::unique_ptr<AQM_MacroValue> MF_Array::Call(const Arguments& arguments) const {
    auto result = std::make_unique<AQM_MacroValueArray>();
    const auto add = [&result](const I18NString& text) { result->AddValue(new AQM_MacroValueString(text)); };
    for (const AQM_MacroValue* const argument : arguments) {
        if (const AQM_MacroValueString* const text = QMAsString(argument)) add(text->GetValue());
        if (const AQM_MacroValueArray* const array = QMAsArray(argument)) QMForEachString(*array, add);
    }
    return result;
}
