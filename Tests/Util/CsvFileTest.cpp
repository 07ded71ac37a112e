// Delimited files byte by byte and record by record. Bytes of wide encodings stand as text that is widened.
#include "AQU_csvFile_v2.h"

#include <csignal>
#include <random>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "Support/Directory.h"
#include "Support/FailureCheck.h"
#include "Support/Rows.h"

namespace {

using Record = std::vector<I18NString>;
using brindle_test::FailureOf;

const std::string kMark8 = "\xEF\xBB\xBF", kMark16 = "\xFF\xFE", kMark32("\xFF\xFE\0\0", 4);

std::string Widen(const std::string& text, std::size_t unit) {
    return I18NString(std::string_view(text)).encode(unit == 1 ? "utf-8" : unit == 2 ? "utf-16" : "utf-32");
}

struct CsvFile : testing::Test, brindle_test::Directory {
    // All that can be read as "field|field/field", a stroke behind each field but the last, a slash behind each record.
    static std::string ReadAll(AQU_csvFile_v2& file) {
        std::string text;
        for (Record fields; file.Get(fields); fields.clear()) {
            for (const I18NString& field : fields)
                text += (&field == fields.data() ? "" : "|") + std::string(field.bytes());
            text += "/";
        }
        return text;
    }
    std::string Read(const std::string& name, const std::string& bytes) const {
        AQU_csvFile_v2 file(Write(name, bytes), "r");
        return ReadAll(file);
    }
    std::string Put(const std::string& name, const char* mode, const std::vector<Record>& records) const {
        AQU_csvFile_v2 file(Path(name), mode);
        for (const Record& record : records)
            file.Put(record);
        return Bytes(name);
    }
};

TEST_F(CsvFile, LinesAreTakenApart) {
    brindle_test::CheckRows(
        [this](const std::string& line) {
            const std::string read = Read("data.CSV", line + "\r\n");
            EXPECT_EQ(Read("data.csv", line), line.empty() ? "" : read) << "without a line end";
            EXPECT_EQ(Read("x", kMark16 + Widen(line + "\r\n", 2)), Read("x", kMark8 + line + "\r\n"));
            return read;
        },
        "a,b -> a|b/", "\"a,b\",c -> a,b|c/", "a\"\"b -> a\"\"b/", "\"a\"\"b\" -> a\"b/", "a, -> a|/", " -> /",
        ",,\xC3\xA9 -> ||\xC3\xA9/", "ab\" -> b/", "\xC3\xA9\xC3\xA0\" -> \xC3\xA0/", "\" -> /", "\"\"\" -> \"/",
        "\"\"\"\",\" ,\"\"\" -> \"| ,\"/", "a\"b,c\"d,e -> a\"b,c\"d|e/", "a\",b -> a\",b/",
        "\xFF,\xE2\x82,a -> \xEF\xBF\xBD|\xEF\xBF\xBD|a/", "a\tb -> a\tb/", "a\rb -> a\rb/");
}

TEST_F(CsvFile, TheUnitBeforeALineFeedIsLost) {
    EXPECT_EQ(Read("data.csv", "abc\n\nd,\n\r\nxyz"), "ab//d//xyz/");
    EXPECT_EQ(Read("data.csv", "a\xC3\xA9\n"), "a\xEF\xBF\xBD/");
    EXPECT_EQ(Read("data.csv", "a\r"), "a/") << "half a line end";
    EXPECT_EQ(Read("data.csv", std::string("a\0,\0\r\n", 6)), std::string("a\0|\0/", 5)) << "lengths, not terminators";
    EXPECT_EQ(Read("x.txt", kMark32 + Widen("abc\n\nd\t\n\r\ne\r", 4)), "ab//d//e/");
}

TEST_F(CsvFile, TheFirstBytesOfATabFileDecide) {
    const auto read = [this](const std::string& bytes) { return Read("data.txt", bytes); };
    EXPECT_EQ(read(std::string("\0\0\xFE\xFF", 4) + Widen("ab", 4)), "ab/") << "the order isn't kept";
    EXPECT_EQ(read("a,b\tc"), "a,b|c/");
    EXPECT_EQ(read("a\tb"), "") << "three bytes hold no mark";
    EXPECT_EQ(Read("data.csv", kMark8 + "a"), kMark8 + "a/") << "comma files have none";
    EXPECT_EQ(read(kMark16 + std::string("A\n\0B", 4)), "\xE0\xA9\x81\xE4\x88\x80/") << "no unit begins there";
    EXPECT_EQ(read(kMark16 + Widen("ab\r", 2) + "\n"), "ab\r\xEF\xBF\xBD/") << "half a line feed at the end";
    std::filesystem::current_path(m_directory), AQU_csvFile_v2("v", "w");
    EXPECT_EQ(Bytes("v"), kMark16) << "a name shorter than the extension";
}

TEST_F(CsvFile, FieldsAreWritten) {
    const Record record{"a", "b,c", "", "d\te", "f\"g", "h\ni", "12345678\""};
    const std::string comma = "a,\"b,c\",,d\te,\"f\"\"g\",h\ni,\"12345678\"\"\"\r\n\r\n";
    const std::string tab = "a\tb,c\t\t\"d\te\"\t\"f\"\"g\"\th\ni\t\"12345678\"\"\"\r\n\r\n";
    EXPECT_EQ(Put("x.csv", "w", {record, {}}), comma);
    EXPECT_EQ(Put("q.csv", "w", {{I18NString(U'"', 5000)}}), std::string(10002, '"') + "\r\n");
    Write("y.tab", kMark32 + Widen("q", 4));
    EXPECT_EQ(Put("y.tab", "a+", {record, {}}), kMark32 + Widen("q" + tab, 4));
    EXPECT_EQ(Put("x.txt", "w", {{"\xF0\x9F\x98\x80"}}), kMark16 + std::string("\x3D\xD8\0\xDE\r\0", 6))
        << "two bytes for each of three characters";
    brindle_platform::setDefaultEncoding("iso-8859-1");
    EXPECT_EQ(Put("l.csv", "w+", {{"\xC3\xA9", "\xE2\x82\xAC"}}), "\xE9,?\r\n");
    EXPECT_EQ(Read("l.csv", "\xE9,?"), "\xC3\xA9|?/");
    EXPECT_TRUE(Put("new.txt", "a", {}) == kMark16 && Put("new.txt", "r+", {}) == kMark16 + kMark16);
    Write("short.txt", "abc");
    EXPECT_EQ(Put("short.txt", "a", {{"d"}}), "abc" + kMark16 + Widen("d\r\n", 2)) << "too short for a mark";
}

TEST_F(CsvFile, RecordsComeBack) {
    std::minstd_rand random(20240229);
    const char* const pieces[] = {",",        "\t",           "\"", "a",
                                  "\xC3\xA9", "\xE2\x82\xAC", "\r", "long enough for many blocks"};
    std::vector<Record> records(2000);
    for (Record& record : records) {
        record.resize(1 + random() % 5);
        for (I18NString& field : record)
            for (auto count = random() % 60; count > 40; --count)
                field += pieces[random() % std::size(pieces)];
    }
    for (const auto& [mark, unit] : {std::pair(std::string(), 1u), {kMark8, 1u}, {kMark16, 2u}, {kMark32, 4u}}) {
        const char* const name = mark.empty() ? "c.csv" : "t.txt";
        Write(name, mark + Widen("first\r\n", unit));
        Put(name, "a", records);
        AQU_csvFile_v2 file(Path(name), "r");
        Record fields{"kept"};
        EXPECT_TRUE(file.Get(fields) && fields == (Record{"kept", "first"}));
        for (const Record& record : records) {
            fields.clear();
            ASSERT_TRUE(!file.Eof() && file.Get(fields));
            ASSERT_EQ(fields, record) << name << " " << unit;
        }
        EXPECT_TRUE(!file.Get(fields) && fields == records.back());
    }
}

TEST_F(CsvFile, TheEndMovesBackByOneByte) {
    AQU_csvFile_v2 file(Write("x.csv", "a\r\nb"), "r+");
    Record fields;
    EXPECT_TRUE(!file.Eof() && file.Get(fields) && !file.Eof() && file.Get(fields));
    EXPECT_TRUE(file.Eof() && !file.Eof() && ReadAll(file) == "b/") << "the last byte once more";

    AQU_csvFile_v2 cut(Write("x.csv", "a\r\n" + std::string(5000, 'b') + "\r\nc\r\n"), "r");
    ASSERT_TRUE(cut.Get(fields));
    Write("x.csv", "");
    EXPECT_EQ(ReadAll(cut), std::string(512 - 3, 'b') + "/") << "what had been read";
}

TEST_F(CsvFile, FailuresNameTheFile) {
    const auto told = [](const char* number, const I18NString& name, const char* line) {
        return std::string("QEException -1 ") + number + "(\"" + name.c_str() + "\") Source/QUcsvFile:" + line;
    };
    const auto open = [](const I18NString& name, const char* mode) {
        return FailureOf([&] { AQU_csvFile_v2 file(name, mode); });
    };
    const I18NString plain = Write("x.csv", "");
    EXPECT_EQ(open("", "r"), told("0x35d783ff", "", "43"));
    for (const char* const mode : {"", "rw", "R", "w ", static_cast<const char*>(nullptr)})
        EXPECT_EQ(open(plain, mode), told("0x35d783ff", plain, "43")) << (mode ? mode : "null");
    EXPECT_EQ(open(Path("no/x.csv"), "w"), told("0x35d783ff", Path("no/x.csv"), "51"));
    AQU_csvFile_v2 readOnly(plain, "r"), full(plain, "w");
    const auto put = [](AQU_csvFile_v2& file) { return FailureOf([&] { file.Put({"a"}); }); };
    EXPECT_EQ(put(readOnly), told("0x35d4834c", plain, "268"));
    const rlimit twoBytes{2, RLIM_INFINITY}, any{RLIM_INFINITY, RLIM_INFINITY};
    std::signal(SIGXFSZ, SIG_IGN), setrlimit(RLIMIT_FSIZE, &twoBytes);
    EXPECT_EQ(put(full), told("0x35d4834c", plain, "268")) << "written in part";
    setrlimit(RLIMIT_FSIZE, &any);
}

} // namespace
