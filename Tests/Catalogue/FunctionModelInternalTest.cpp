// What no file can give: a tree of any depth, and a parameter without a description.
#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "QFFunctionDescription.h"
#include "QFFunctionParameter.h"

namespace {

TEST(FunctionDescription, ADeepTreeIsFreedWithoutRecursion) {
    std::unique_ptr<AQF_FunctionDescription> tree;
    for (int depth = 0; depth < 200'000; ++depth) {
        auto above = std::make_unique<AQF_FunctionDescription>(nullptr, FT_group, "id");
        above->children = std::make_unique<std::vector<std::unique_ptr<AQF_FunctionDescription>>>();
        if (tree) tree->parent = above.get(), above->children->push_back(std::move(tree));
        tree = std::move(above);
    }
    tree.reset();
}

TEST(FunctionParameter, WithoutADescriptionItIsOneValueOfNoType) {
    AQF_FunctionParameter parameter(nullptr);
    std::vector<I18NString> types;
    parameter.GetTypes(types);
    EXPECT_TRUE(types.empty() && parameter.GetType().empty() && parameter.GetIsNullable());
    EXPECT_TRUE(parameter.GetMinOccurs() == 1 && parameter.GetMaxOccurs() == 1 && !parameter.GetIsOptional());
}

} // namespace
