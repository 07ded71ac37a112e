// A library of the catalogue as one client sees it. It belongs to its definition, and is one thread's at a time as that
// is.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQF_I_FunctionDLL.h"

#include "QFFunctionDescription.h"

class AQF_FunctionDefinition;
class AQF_FunctionNode;

class AQF_FunctionDLL : public AQF_I_FunctionDLL {
public:
    // Makes the nodes of all entries, whatever the definition's filters.
    AQF_FunctionDLL(AQF_FunctionDefinition& owner, const AQF_LibraryDescription& library);

    void GetFunctions(std::vector<AQF_I_FunctionNode*>& functions) override;
    const I18NString& GetName() override;

private:
    const AQF_LibraryDescription* m_description;
    std::vector<AQF_FunctionNode*> m_functions;
};
