// Names as they stand in query text and in SQL. An object name of the model has its parts in brackets, "[sales].[a]]b]"
// for "sales" and "a]b". A physical name of a database is bare where SQL reads it as one word, else in double quotes:
// a"b becomes "a""b". Each routine takes time linear in its texts and may run on any thread.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// "[a]", "[a].[b]", "[a].[b].[c]".
BRINDLE_API I18NString AQE_MakeObjectName(const I18NString& a);
BRINDLE_API I18NString AQE_MakeObjectName(const I18NString& a, const I18NString& b);
BRINDLE_API I18NString AQE_MakeObjectName(const I18NString& a, const I18NString& b, const I18NString& c);

// The part with each "]" doubled, without brackets. The form for several parts is the whole object name, empty for no
// part.
BRINDLE_API I18NString AQE_ConvertNamepartToString(const I18NString& part);
BRINDLE_API I18NString AQE_ConvertNamepartToString(const std::vector<I18NString>& parts);

// Takes an object name apart again and appends its parts. A missing part is an empty one: "" has one, "[a]." and ".[a]"
// have two. False if the text is no object name; the parts found up to the fault have then been appended.
BRINDLE_API bool AQE_ExtractNamePartsFromString(I18NString text, std::vector<I18NString>& parts);

// Replaces "[oldGroup].[oldObject]" by "[newGroup].[newObject]" throughout `text`. The four parts are taken as they
// are, with no doubling of "]".
BRINDLE_API I18NString AQE_ReplaceGroupQueryObject(const I18NString& oldGroup, const I18NString& oldObject,
                                                   const I18NString& newGroup, const I18NString& newObject,
                                                   const I18NString& text);

// The part with each single quote doubled, for use inside an SQL string literal.
BRINDLE_API I18NString AQE_ConvertNamepartToLiteral(const I18NString& part);

// The name with every character that is neither letter nor digit turned into "_", and "C_" in front unless it begins
// with a letter: "1a" gives "C_1a", "a-b" gives "a_b". An empty name stays empty.
BRINDLE_API I18NString AQE_MakeValidSqlIdentifier(const I18NString& name);

// Removes the double quotes around the name, if it has both, and then makes one double quote of each two, even in a
// name that was not quoted.
BRINDLE_API I18NString AQE_RemoveDoubleQuotes(const I18NString& name);

// The name as it must stand in SQL: bare if it is a plain identifier and no keyword, else in double quotes. Quotes that
// the name brings along are taken off first. The user option "DoubleQuotes" of "Transformations", read once in a
// process, has every name quoted that isn't empty.
BRINDLE_API I18NString AQE_MakePhysicalSqlName(const I18NString& name);
