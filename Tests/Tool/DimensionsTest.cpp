// "dimensions": what is printed, dropped and refused.
#include "Tool/ToolFixture.h"

namespace {

TEST_F(ToolTest, DimensionsAreListedWithoutTheSetsThatAreLeftOut) {
    const std::string input = R"({"groups":[[4294967295],[2,9],[]],"keys":[[2]],"items":{"4294967295":"a","2":"b"}})";
    const std::string dropped = "-: note: the set at '/groups/1' has the item 9, which '/items' lacks; it is left out\n"
                                "-: note: the set at '/groups/2' is empty; it is left out\n";
    const std::string levels = R"({"level":2,"unique":false,"keys":[4294967295],"properties":[]},)"
                               R"({"level":1,"unique":true,"keys":[2],"properties":[]})";
    Check({{{"dimensions", "--json"}, input, {0, R"([{"hierarchy":2,"levels":[)" + levels + "]}]", dropped}},
           {{"dimensions", "--json"},
            R"({"items":{"0":"a"},"groups":[[-0]]})",
            {0, R"([{"hierarchy":1,"levels":[{"level":1,"unique":false,"keys":[0],"properties":[]}]}])", ""}}});
}

TEST_F(ToolTest, DimensionsOfAnotherFormAreRefused) {
    const auto refused = [](const std::string& input, const std::string& message) {
        Check({{{"dimensions"}, input, {1, "", "-" + message + "\n"}}});
    };
    refused("[\n,", ":2:1: syntax error while parsing value - unexpected ','; expected '[', '{', or a literal\n,\n^");
    refused("[1e999]", ": number overflow parsing '1e999'");
    refused(R"({"key":[]})", ": expected 'items', 'keys' or 'groups', found 'key'");
    refused(R"({"keys":[],"keys":[]})", ": the name 'keys' is given twice");
    refused(R"({"items":{"1":"a","01":"b"}})", ": the item '1' is named twice");
    refused(R"({"items":{"1":{}}})", ": expected a text at '/items/1', found object");
    for (const std::string item : {"", "4294967296", "1x"})
        refused(R"({"items":{")" + item + "\":1}}",
                ": expected the number of an item in '/items', found '" + item + "'");
    for (const std::string item : {"-1", "1.5", "4294967296", "\"1\""})
        refused("{\"groups\":[[" + item + "]]}", ": expected the number of an item at '/groups/0/0', found " + item);
    refused("{\"keys\":" + std::string(100000, '[') + std::string(100000, ']') + "}",
            ": expected the number of an item at '/keys/0/0', found array");
}

} // namespace
