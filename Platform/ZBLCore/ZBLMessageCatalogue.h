// The texts of numbered messages. A catalogue is the file ../configuration/messages/<file>_<locale>.txt below the
// program directory, in UTF-8, one text to a line:
//
//     # a comment
//     0x35d64ee1<TAB>macro values that are macros again are nested beyond the limit of %1
//
// The number is decimal or hexadecimal; \n, \t and \\ in the text are escapes; of two lines with one number the later
// counts; a line of another form is passed over. Sought are the catalogues of the locale, of its language and of "en",
// and the first that has the number answers.
//
// A file is read when it is first asked for and never again, so one that is missing then is not seen later. What was
// read stands unchanged to the end of the process in a list that only grows, so that readers need no lock.
#pragma once

#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"

struct ZBLMessageCatalogue {
    // Answers whether there is a text for the number, and stores it with its place holders. In `path`, if given, it
    // stores the path of the catalogue that had the text, else of the first one that could be read, else nothing.
    // Message files and locales whose names aren't 1 to 64 of A-Z a-z 0-9 _ - have no catalogue. Any thread; fails for
    // want of memory only.
    static bool findText(const I18NString& file, unsigned long number, const I18NLocale& locale, I18NString& text,
                         I18NString* path = nullptr);

    // What stands for a text that no catalogue has: "qemsgs 0x35df687a".
    static I18NString fallbackText(const I18NString& file, unsigned long number);
};
