// Files and directories: what opens, what a short file or a full disk answers, what is listed.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "PlatformHooks.h"
#include "ZBLCore/ZBLFmDir.h"
#include "ZBLCore/ZBLFmFile64.h"

#include "Support/Directory.h"

namespace {

struct FileTest : testing::Test, brindle_test::Directory {};

TEST_F(FileTest, KindsDecideWhatBecomesOfTheFile) {
    Write("old", "abc");
    ZBLFmFile64 file;
    EXPECT_TRUE(file.Open(Path("old"), 1, false) == 0 && file.Open(Path("old"), 4, false) == 0);
    EXPECT_TRUE(file.Open(Path("new"), 3, true) == 0 && !std::filesystem::exists("new"));
    EXPECT_TRUE(file.Open(Path("new"), 3, false) != 0 && std::filesystem::exists("new"));
    EXPECT_TRUE(file.Open(Path("old"), 3, true) != 0 && file.Write("x", 1) == 0 && Bytes("old") == "abc");
    EXPECT_TRUE(file.Open(Path("old"), 2, true) != 0 && file.Write("x", 1) == 0 && Bytes("old") == "");

    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    I18NString zero = Path("old");
    zero.append(I18NCodePoint{0});
    for (const I18NString& name :
         {Path(""), Path("pipe"), I18NString("/dev/full"), zero, Path("no/file"), I18NString()})
        for (const int how : {2, 3, 6, 7})
            EXPECT_EQ(file.Open(name, how % 4, how > 3), 0) << name << how;
    char byte;
    EXPECT_TRUE(file.Read(&byte, 1) == 0 && file.Write("x", 1) == 0 && file.Seek(0, 0, 0) == 0 && file.Close() == 0);
}

TEST_F(FileTest, ThePositionMovesWithin64Bits) {
    ZBLFmFile64 file;
    ASSERT_NE(file.Open(Path("f"), 2, false), 0);
    EXPECT_TRUE(file.Write("abcdef", 6) == 6 && file.Write("x", -1) == 0 && file.Read(nullptr, -1) == 0);
    const auto readAt = [&file](std::int32_t low, std::int32_t high, int origin) -> std::string {
        char bytes[2];
        if (file.Seek(low, high, origin) == 0) return "refused";
        return std::string(bytes, static_cast<std::size_t>(file.Read(bytes, sizeof bytes)));
    };
    EXPECT_TRUE(readAt(0, 0, 0) == "ab" && readAt(-1, -1, 1) == "bc" && readAt(-4, -1, 2) == "cd");
    EXPECT_TRUE(readAt(-5, -1, 1) == "refused" && readAt(0, 0, 3) == "refused" && readAt(0, 0, 1) == "ef");
    EXPECT_EQ(readAt(-1, 0, 0), "") << "4 GiB less one byte";
    EXPECT_TRUE(file.Write("z", 1) == 1 && file.Close() != 0 && file.Close() == 0);
    EXPECT_EQ(std::filesystem::file_size("f"), 0x100000000u);
}

TEST_F(FileTest, DirectoriesListTheirRegularFilesInOrder) {
    for (const char* const name : {"b", "a", "\xC3\xA9", "B", "\xFF", ".hidden"})
        Write(name, "");
    std::filesystem::create_directory("sub");
    for (const auto& [target, link] : {std::pair("a", "link"), {"sub", "linked-sub"}, {"none", "dangling"}})
        std::filesystem::create_symlink(target, link);
    std::vector<I18NString> names{"z"};
    EXPECT_TRUE(ZBLFmDir::readDir(Path(""), names) && !ZBLFmDir::readDir(Path("a"), names));
    EXPECT_EQ(names, (std::vector<I18NString>{"z", ".hidden", "B", "a", "b", "link", "\xC3\xA9"}));
    brindle_platform::setProgramDirectory(Path("sub"));
    EXPECT_EQ(ZBLFmDir::resolveEffectivePath("x.so"), Path("sub/x.so"));
    EXPECT_EQ(ZBLFmDir::resolveEffectivePath("/x.so"), I18NString("/x.so"));
}

} // namespace
