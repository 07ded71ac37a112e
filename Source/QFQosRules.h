// How a function's rules answer for the data sources in use: the level of support that they make together.
#pragma once

#include <set>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "AQF_I_FunctionNode.h"

#include "QFFunctionDescription.h"

// Reads the rules in order for a client with these query types and interfaces (upper case). Selectors are compared
// exactly. Where one of the sets is empty, each rule that selects from it counts.
AQF_I_FunctionNode::EQoSLevel AQF_EvaluateQosRules(const std::vector<AQF_QosRule>& rules,
                                                   const std::set<I18NString>& queryTypes,
                                                   const std::set<I18NString>& interfaces);
