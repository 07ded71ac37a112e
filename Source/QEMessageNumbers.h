// Message numbers of the file "qemsgs", each with its parameters in order.
#pragma once

// Macro scanner and parser.

// How far the text was read (long, characters, from 1, behind the failing token), the text up to there.
inline constexpr long kQEMsgMacroErrorAt = 0x35df687a;
// As above with the head of the text left out: position (long), how much is skipped (long), the rest of the text.
inline constexpr long kQEMsgMacroErrorAtCut = 0x35d924f0;
// The parser runtime's error code (long).
inline constexpr long kQEMsgMacroParserInternal = 0x35da12be;
// Why the text couldn't be parsed (text).
inline constexpr long kQEMsgMacroParseFailed = 0x35d5e2f1;
// Kinds of failure that a location message stands in for; no parameters.
inline constexpr long kQEMsgMacroSyntaxError = 0x35ded7d3;
inline constexpr long kQEMsgMacroIllegalCharacter = 0x35d8e2d6;

// Macro execution.

// The limit on nested macro values (long).
inline constexpr long kQEMsgMacroNestingTooDeep = 0x35d64ee1;
// The function's name.
inline constexpr long kQEMsgMacroUnknownFunction = 0x35ddd82c;
// The function's name. The function had nothing to say about its arguments.
inline constexpr long kQEMsgMacroFunctionNoResult = 0x35ddd827;

// Macro functions.

// The function's name, how many arguments were given, how many are wanted (all texts).
inline constexpr long kQEMsgMacroTooFewArguments = 0x35d02632;
inline constexpr long kQEMsgMacroTooManyArguments = 0x35d21983;
// The function's name; without parameters when a concatenation has an operand that is no string.
inline constexpr long kQEMsgMacroWrongArguments = 0x35dc6529;
// The function's name, the argument's place ("1", "2" or "3"), its type's name, the wanted type's name.
inline constexpr long kQEMsgMacroWrongArgumentType = 0x35d7cf2c;
// The pattern, the function's name.
inline constexpr long kQEMsgMacroBadPattern = 0x35d7b2b8;
