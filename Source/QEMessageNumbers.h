// Message numbers of the file "qemsgs", unless another one is named, each with its parameters in order.
#pragma once

// Locales.

// What the configuration service failed with (text).
inline constexpr long kQEMsgContentLocaleFailed = 0x35d3fe99;

// Macro scanner and parser.

// How far the text was read (long, characters, from 1, behind the failing token), the text up to there.
inline constexpr long kQEMsgMacroErrorAt = 0x35df687a;
// As above with the head of the text left out: position (long), how much is skipped (long), the rest of the text.
inline constexpr long kQEMsgMacroErrorAtCut = 0x35d924f0;
// The parser runtime's error code (long).
inline constexpr long kQEMsgMacroParserInternal = 0x35da12be;
// Why the text couldn't be parsed (text).
inline constexpr long kQEMsgMacroParseFailed = 0x35d5e2f1;
// What the two kinds of failure are called; never thrown, since the messages above stand in for them. No parameters.
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

// Log texts of the parameter maps, of the file "QE"; no parameters.

inline constexpr int kQELogConfigurationFileMissing = 0x35dc43d6;
inline constexpr int kQELogNoParameterMapsSection = 0x35dba539;

// Function catalogue.

// The name that no entry has.
inline constexpr long kQEMsgUnknownFunction = 0x35d1aa3b;

// Log texts of the function catalogue, of the file "QE": selection.

// The vendor.
inline constexpr int kQELogUnknownVendor = 0x35d90b2c;
// The vendor key that has no name.
inline constexpr int kQELogUnknownVendorKey = 0x35d240e6;

// Units.

// The unit that was added to and the one that was added, as texts.
inline constexpr long kQEMsgUnlikeUnits = 0x35dfedff;

// Log texts of the function catalogue's files, of the file "QE".

// Which locales there are, the locale without texts.
inline constexpr int kQELogNoTextsForLocale = 0x35dd45e5;
// The locale, the key, the second text, the one that is kept.
inline constexpr int kQELogTextIsGivenAgain = 0x35dfc864;
// The entry's id, the name.
inline constexpr int kQELogKindHasNoName = 0x35d2ffde;
// The entry's kind as a number, its id, the name, the other's kind, id and text.
inline constexpr int kQELogKindsDiffer = 0x35d0cb52;
// The kind, the entry's id, the name.
inline constexpr int kQELogBothHaveLibraries = 0x35db32ff;
// The entry's id, the name, the canonical text, the other's id, text and canonical text.
inline constexpr int kQELogCanonicalsDiffer = 0x35d19bfb;
// The rule's place in its element from 1, the file, the entry's id.
inline constexpr int kQELogMalformedRule = 0x35de6af7;

// Delimited files.

// The file's name; also for an unknown mode.
inline constexpr long kQEMsgFileNotOpened = 0x35d783ff;
// The file's name.
inline constexpr long kQEMsgFileNotWritten = 0x35d4834c;

// String bucket.

// The number that no string has (text).
inline constexpr long kQEMsgNoSuchString = 0x35d6063c;
