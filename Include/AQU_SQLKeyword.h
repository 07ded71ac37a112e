// Tells keywords of SQL and of the query language from other words, for naming rules: a name spelled like a keyword
// must be quoted. Case doesn't matter; blanks and quotes around the word are not removed. Any thread.
#pragma once

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class BRINDLE_API AQU_SQLKeyword {
public:
    AQU_SQLKeyword() = delete;

    // A reserved word of SQL.
    static bool IsReservedKeyword(const I18NString& word);
    // A reserved word of SQL or a word of the query language, such as "xavg".
    static bool IsKeyword(const I18NString& word);
};
