// Looks at a macro value as what it is.
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
