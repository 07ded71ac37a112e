// A library of the catalogue: its name and the nodes of its entries.
#include "QFFunctionDLL.h"

#include "QFFunctionDefinition.h"
#include "QFFunctionNode.h"

AQF_I_FunctionDLL::~AQF_I_FunctionDLL() = default;

AQF_FunctionDLL::AQF_FunctionDLL(AQF_FunctionDefinition& owner, const AQF_LibraryDescription& library)
    : m_description(&library) {
    m_functions.reserve(library.entries.size());
    for (AQF_FunctionDescription* const entry : library.entries)
        m_functions.push_back(owner.NodeOf(entry));
}

void AQF_FunctionDLL::GetFunctions(std::vector<AQF_I_FunctionNode*>& functions) {
    functions.insert(functions.end(), m_functions.begin(), m_functions.end());
}

const I18NString& AQF_FunctionDLL::GetName() { return m_description->name; }
