// The built-in functions are static objects: they are made while the library is loaded, and nothing changes them.
#include "QMMacroBuiltIns.h"

#include "QMListFunctions.h"
#include "QMQuotingFunctions.h"

namespace {

MF_SingleQuote singleQuote;
MF_DoubleQuote doubleQuote;
MF_SingleBracket singleBracket;
MF_CSV csv;
MF_Array array;
MF_Sort sort;
MF_Grep grep;
MF_Substitute substitute;
MF_Unique unique;
MF_Split split;
MF_Join join;
MF_UrlEncode urlEncode;

AQM_I_MacroFunction* const functions[] = {&singleQuote, &doubleQuote, &singleBracket, &csv,   &array, &sort,
                                          &grep,        &substitute,  &unique,        &split, &join,  &urlEncode};

} // namespace

std::span<AQM_I_MacroFunction* const> QMGetBuiltInFunctions() { return functions; }
