// A library that functions of the catalogue belong to. It is a name with a list: the catalogue never loads it.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class AQF_I_FunctionNode;

// Belongs to the definition that answered it, and lives as long as that. One thread at a time.
class BRINDLE_API AQF_I_FunctionDLL {
public:
    virtual ~AQF_I_FunctionDLL();

    // Appends the library's functions in the order in which they were read, hidden ones and those that a filter shuts
    // out too.
    virtual void GetFunctions(std::vector<AQF_I_FunctionNode*>& functions) = 0;
    virtual const I18NString& GetName() = 0;
};
