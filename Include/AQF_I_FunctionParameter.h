// One parameter of a function: its type, how often it may stand, and whether it takes a null value.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// Whoever asked a node for its parameters owns them. An object must not be used beyond the end of the catalogue. One
// thread at a time.
class BRINDLE_API AQF_I_FunctionParameter {
public:
    virtual ~AQF_I_FunctionParameter();

    // Appends the alternatives of the type. Each piece between two separators " | " is one, an empty piece too, so an
    // empty type appends one empty text.
    virtual void GetTypes(std::vector<I18NString>& types) = 0;

    // The type as it was written, alternatives joined by " | ".
    virtual const I18NString& GetType() = 0;

    // Whether GetMinOccurs answers 0.
    virtual bool GetIsOptional() = 0;
    virtual int GetMinOccurs() = 0;

    // The base answers 1.
    virtual int GetMaxOccurs();

    // What the description says. Where it says nothing, false if an alternative of the type is a word for something
    // that has no null value, such as "level" or "keyword". The base answers true.
    virtual bool GetIsNullable();
};
