// The built-in macro functions that work on lists: join, split, grep, sort, unique, substitute and csv. Of an array
// only the string elements take part; others are dropped.
#pragma once

#include "QMMacroFunction.h"

// join(separator, array or text): the elements with the separator in front of each whose index isn't 0, so that a
// dropped first element leaves a leading separator. A text comes back as it is.
class MF_Join : public MF_BuiltIn {
public:
    MF_Join();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// split(separator, text or array): the pieces between the separators, empty ones too; of an array the pieces of all
// elements in one. An empty separator splits nothing.
class MF_Split : public MF_BuiltIn {
public:
    MF_Split();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// grep(pattern, array): the elements that match, or with a negated pattern those that don't.
class MF_Grep : public MF_BuiltIn {
public:
    MF_Grep();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// sort(array): the elements in code-point order, duplicates too.
class MF_Sort : public MF_BuiltIn {
public:
    MF_Sort();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// unique(array): the first of equal elements, in the order of the array.
class MF_Unique : public MF_BuiltIn {
public:
    MF_Unique();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// substitute(pattern, replacement, text or array): the match replaced, one in each text; a negation has no effect. Of a
// text a text, of an array an array.
class MF_Substitute : public MF_BuiltIn {
public:
    MF_Substitute();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};

// csv(array, separator, quote): the elements between quotes, each quote in them doubled, with the separator in front of
// each as soon as the result isn't empty. The separator is "," and the quote "'" unless they are given.
class MF_CSV : public MF_BuiltIn {
public:
    MF_CSV();

private:
    std::unique_ptr<AQM_MacroValue> Call(const Arguments& arguments) const override;
};
