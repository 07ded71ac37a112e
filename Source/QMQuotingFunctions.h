// The built-in macro functions that quote, encode or build: sq, dq, sb, urlencode and array.
#pragma once

#include "QMMacroFunction.h"

// sq(text or array): the text in apostrophes, each apostrophe in it doubled; of an array each string element. No
// argument, or more than one, gives two apostrophes.
class MF_SingleQuote : public MF_BuiltIn {
public:
    MF_SingleQuote();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// dq(text): the text in double quotes, each double quote in it doubled. No argument, or more than one, gives two double
// quotes; an array is refused.
class MF_DoubleQuote : public MF_BuiltIn {
public:
    MF_DoubleQuote();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// sb(text): the text in brackets, each "]" in it doubled. No argument, or more than one, gives "[]"; an array is
// refused.
class MF_SingleBracket : public MF_BuiltIn {
public:
    MF_SingleBracket();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// urlencode(text or array): the text as AQE_UrlEncode gives it; of an array each string element. No argument, or more
// than one, gives two apostrophes, as sq does.
class MF_UrlEncode : public MF_BuiltIn {
public:
    MF_UrlEncode();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// array(...): one array of all arguments in order, the string elements of array arguments among them.
class MF_Array : public MF_BuiltIn {
public:
    MF_Array();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};
