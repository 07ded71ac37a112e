// "csv": what is said of what gets lost, and that the file that is read stays.
#include "Tool/ToolFixture.h"

namespace {

TEST_F(ToolTest, CsvSaysWhatIsLostAndKeepsWhatItReads) {
    const auto note = [this](const std::string& name, const std::string& bytes, const std::string& expected) {
        Write(name, bytes);
        Check({{{"csv", name, "--to", "out.csv"}, "", {0, "", name + ": note: " + expected + "\n"}}});
    };
    const std::string bare = " ends in a bare line feed; such a line loses its last character";
    note("x.csv", "a\r\nb\r\nc\nd\n", "line 3" + bare);
    note("x.txt", "\xFF\xFE" + std::string("a\0\r\0\n\0\n\n\n\0", 10), "line 2" + bare);
    note("x.txt", std::string("\xFE\xFF\0a", 4), "the mark says big-endian, the text is read as little-endian");
    note("x.txt", "a\tb", "a tab-separated file of fewer than four bytes is read as empty");
    Write("e.csv", "a\r\n\xE2\x82\xAC\xF0\x9F\x98\x80\r\n\xF0\x9F\x98\x80\r\n\r\n");
    const std::string wide = "o.txt: note: record 2 has characters beyond 16 bits; such a record is cut short\n";
    Check({{{"csv", "e.csv", "--to", "o.txt"}, "", {0, "", wide}},
           {{"csv", "e.csv", "--to", "e.csv"}, "", {1, "", "e.csv: expected another file than the one that is read\n"}},
           {{"csv", "e.csv"}, "", {0, "\"a\"\n\"\xE2\x82\xAC\xF0\x9F\x98\x80\"\n\"\xF0\x9F\x98\x80\"\n\"\"\n", ""}}});
}

} // namespace
