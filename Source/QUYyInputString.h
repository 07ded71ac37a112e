// The macro scanner's input: one text in memory, with the report of a place in it.
#pragma once

#include "QUYyRuntime.h"

class AQU_YYError;

// Borrows the caller's bytes for the run, and the error object for its life. One thread at a time.
class AQU_YYInputString : public yy_inp_obj, public yy_loc_obj {
public:
    explicit AQU_YYInputString(AQU_YYError* error);
    // An input over the same text for the same error object.
    AQU_YYInputString(const AQU_YYInputString& other);
    AQU_YYInputString& operator=(const AQU_YYInputString&) = delete;

    // Sets the error object's position, which counts characters from 1 and is the place behind the current token, and
    // its location message: the text up to there, or the end of it if the user option "ExprDisplayLimit" of section
    // "General Options" is at least 1 and below the position. That end is cut at a byte.
    void yy_loc_print_self(yy_err_obj* error) override;

    void Reset();

private:
    AQU_YYError* m_error;
};
