// All failures of the built-in functions are raised here, in one way; the caller's line tells them apart in the log.
#include "QMMacroFunction.h"

#include <utility>

#include "Mortise/AUT_Text.h"

#include "QEException.h"

#include "QEMessageNumbers.h"
#include "QEThrow.h"

namespace {

constexpr long kCodeMacroFunction = 202;

[[noreturn]] void Fail(long message, int parameterCount, const I18NString& p1, const I18NString& p2,
                       const I18NString& p3, const I18NString& p4, long line) {
    QEException failure(ZBLSeverity::error, kCodeMacroFunction);
    QEAddMessages(failure, message, parameterCount, p1, p2, p3, p4);
    QELogAndThrow(failure, "Source/QMMacroExpander", line);
}

const char* TypeName(const AQM_MacroValue* value) {
    switch (value ? value->GetValueType() : AQM_MacroValue::MVT_None) {
    case AQM_MacroValue::MVT_String:
        return "string";
    case AQM_MacroValue::MVT_Array:
        return "array";
    case AQM_MacroValue::MVT_Map:
        return "map";
    case AQM_MacroValue::MVT_None:
        break;
    }
    return "unknown";
}

} // namespace

MF_BuiltIn::MF_BuiltIn(const char* name, std::initializer_list<AQM_MacroValue::MacroValueType> parameterTypes,
                       AQM_MacroValue::MacroValueType returnType)
    : m_name(name), m_parameterTypes(parameterTypes.begin(), parameterTypes.end()), m_returnType(returnType) {}

void MF_BuiltIn::GetParameterTypes(std::vector<int>& types) {
    types.insert(types.end(), m_parameterTypes.begin(), m_parameterTypes.end());
}

I18NString MF_BuiltIn::GetName() { return m_name; }

int MF_BuiltIn::GetReturnType() { return m_returnType; }

AQM_MacroValue* MF_BuiltIn::Execute(AQM_MacroValue* arguments) {
    const AQM_MacroValueArray* const frame = QMAsArray(arguments);
    return frame ? Call(Arguments(*frame)).release() : nullptr;
}

void MF_BuiltIn::FailTooFew(const Arguments& arguments, int wanted, long line) const {
    Fail(kQEMsgMacroTooFewArguments, 3, m_name, AUT_ToString(arguments.Count()), AUT_ToString(wanted), {}, line);
}

void MF_BuiltIn::FailTooMany(const Arguments& arguments, int wanted, long line) const {
    Fail(kQEMsgMacroTooManyArguments, 3, m_name, AUT_ToString(arguments.Count()), AUT_ToString(wanted), {}, line);
}

void MF_BuiltIn::FailCount(long line) const { Fail(kQEMsgMacroWrongArguments, 1, m_name, {}, {}, {}, line); }

void MF_BuiltIn::FailType(const Arguments& arguments, int index, const char* wanted, long line) const {
    Fail(kQEMsgMacroWrongArgumentType, 4, m_name, AUT_ToString(index + 1), TypeName(arguments[index]), wanted, line);
}

void MF_BuiltIn::FailPattern(const I18NString& pattern, long line) const {
    Fail(kQEMsgMacroBadPattern, 2, pattern, m_name, {}, {}, line);
}

const I18NString& MF_BuiltIn::RequireString(const Arguments& arguments, int index, long line) const {
    const AQM_MacroValueString* const text = QMAsString(arguments[index]);
    if (!text) FailType(arguments, index, "string", line);
    return text->GetValue();
}

const AQM_MacroValueArray& MF_BuiltIn::RequireArray(const Arguments& arguments, int index, long line) const {
    const AQM_MacroValueArray* const array = QMAsArray(arguments[index]);
    if (!array) FailType(arguments, index, "array", line);
    return *array;
}

void QMAppendDoubled(I18NString& out, const I18NString& text, const I18NString& mark) {
    const std::string_view bytes = text.bytes();
    std::size_t copied = 0;
    for (std::size_t end; (end = I18NFindBytes(bytes, mark.bytes(), copied)) != std::string_view::npos;) {
        end += mark.bytes().size();
        out.appendValidUtf8(bytes.substr(copied, end - copied));
        out += mark;
        copied = end;
    }
    if (copied == 0)
        out += text;
    else
        out.appendValidUtf8(bytes.substr(copied));
}

void QMAppendQuoted(I18NString& out, const I18NString& text, const I18NString& opening, const I18NString& closing) {
    out += opening;
    QMAppendDoubled(out, text, closing);
    out += closing;
}

std::unique_ptr<AQM_MacroValue> QMMakeString(I18NString text) {
    return std::make_unique<AQM_MacroValueString>(std::move(text));
}

std::unique_ptr<AQM_MacroValue> QMMapStrings(const AQM_MacroValueArray& array,
                                             const std::function<I18NString(const I18NString&)>& convert) {
    auto result = std::make_unique<AQM_MacroValueArray>();
    QMForEachString(array, [&](const I18NString& text) { result->AddValue(new AQM_MacroValueString(convert(text))); });
    return result;
}
