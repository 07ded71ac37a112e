// One parameter of a function as one client sees it: a view of a description. Immutable.
#pragma once

#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQF_I_FunctionParameter.h"

#include "QFFunctionDescription.h"

class AQF_FunctionParameter : public AQF_I_FunctionParameter {
public:
    // The description may be null: a parameter of no type that stands exactly once.
    explicit AQF_FunctionParameter(const AQF_ParameterDescription* description);

    void GetTypes(std::vector<I18NString>& types) override;
    const I18NString& GetType() override;
    bool GetIsOptional() override;
    int GetMinOccurs() override;
    int GetMaxOccurs() override;
    bool GetIsNullable() override;

private:
    const AQF_ParameterDescription* m_description;
};
