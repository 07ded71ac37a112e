// What the built-in functions say of themselves.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "QMMacroBuiltIns.h"

namespace {

TEST(MacroBuiltIns, StandInTheOrderOfTheirRegistration) {
    std::string table;
    for (AQM_I_MacroFunction* const function : QMGetBuiltInFunctions()) {
        std::vector<int> types{0};
        function->GetParameterTypes(types);
        table += std::string(function->GetName().bytes()) + "(";
        for (const int type : types)
            table += std::to_string(type);
        table += ")" + std::to_string(function->GetReturnType()) + " ";
    }
    EXPECT_EQ(table, "sq(01)1 dq(01)1 sb(01)1 csv(02)1 array(01)2 sort(02)2 grep(012)2 substitute(0112)2 unique(02)2 "
                     "split(012)2 join(012)1 urlencode(01)1 ");
}

} // namespace
