// "url": what is noted about prompts that are filled in.
#include "Tool/ToolFixture.h"

namespace {

TEST_F(ToolTest, UrlTellsWhatItDidNotFillIn) {
    const std::string note = "brindle: note: ", more = note + "the URL has no prompt 'z'\n" + note +
                                                       "a further value of the prompt 'x' is not used\n";
    const std::string gone = note + "nothing is left of the URL, so it is given with its prompts\n";
    const std::string bare = "brindle: -p: expected NAME=VALUE, found '3'; see 'brindle url --help'\n";
    Check({{{"url", "??x??&??y??", "-p", "x=a b=", "-p", "z=1", "-p", "x=2"}, "", {0, "a+b%3d&??y??\n", more}},
           {{"url", "??x??", "-p", "x="}, "", {0, "??x??\n", gone}},
           {{"url", "a", "-p", "3"}, "", {2, "", bare}}});
}

} // namespace
