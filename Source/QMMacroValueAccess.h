// Looks at a macro value as what it is, and names the evaluator's own functions.
#pragma once

#include "AQM_MacroValue.h"

// The value as a string or as an array; null if it is null or of another type.
inline const AQM_MacroValueString* QMAsString(const AQM_MacroValue* value) {
    if (!value || value->GetValueType() != AQM_MacroValue::MVT_String) return nullptr;
    return static_cast<const AQM_MacroValueString*>(value);
}

inline const AQM_MacroValueArray* QMAsArray(const AQM_MacroValue* value) {
    if (!value || value->GetValueType() != AQM_MacroValue::MVT_Array) return nullptr;
    return static_cast<const AQM_MacroValueArray*>(value);
}

// The function that puts two strings together.
inline const I18NString& QMConcatenation() {
    static const I18NString& name = *new I18NString("+");
    return name;
}

// The function that makes a value a string.
inline const I18NString& QMConversionToString() {
    static const I18NString& name = *new I18NString("_cts");
    return name;
}
