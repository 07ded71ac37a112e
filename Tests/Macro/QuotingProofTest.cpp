// The proof that quoting holds: random texts stand as parameters in statements that are expanded and run on SQLite, and
// each text is read back as it was. A batch has 500 texts; its number is the seed.
#include <random>
#include <set>

#include <gmock/gmock.h>
#include <sqlite3.h>

#include "AQE_TextUtilities.h"
#include "AQM_I_MacroExpander.h"

#include "Support/FailureCheck.h"
#include "Support/Parameters.h"
#include "Support/Rows.h"

namespace {

using Texts = std::vector<std::string>;
using namespace brindle_test;
using testing::ElementsAreArray;

constexpr unsigned kBatches = 50;
constexpr std::size_t kTextsInBatch = 500;

// Texts of up to twelve pieces that mean something to SQL or to the macro language. U+0000 and "|" aren't among them:
// the one ends a statement for SQLite, the other serves as a separator.
Texts RandomTexts(unsigned seed) {
    static const char* const pieces[] = {"'",  "''",   "\"",   "\"\"",   "\\",     "\\'",     "[",          "]",
                                         "]]", "#",    "#",    "$p",     "--",     "/*",      "*/",         "//",
                                         "\n", "\r\n", "\r",   " ",      "\t",     ";",       ",",          "?",
                                         "??", ")",    "\x01", "\u00e9", "\u2019", "e\u0301", "a",          "B",
                                         "7",  "%",    "_",    "`",      "{",      "\ufffd",  "\U0001F600", "\u00a0"};
    std::mt19937 random(seed);
    Texts texts(kTextsInBatch);
    for (std::string& text : texts)
        for (std::size_t rest = random() % 13; rest > 0; --rest)
            text += pieces[random() % std::size(pieces)];
    return texts;
}

// A database in memory; what it answers is one list of texts.
class Database {
public:
    Database() { EXPECT_EQ(sqlite3_open(":memory:", &m_database), SQLITE_OK); }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { sqlite3_close(m_database); }

    // The values of all rows, or with `wantNames` the names of the columns.
    Texts Run(const I18NString& sql, bool wantNames = false) {
        Texts texts;
        sqlite3_stmt* statement = nullptr;
        const char* tail = nullptr;
        const std::string_view bytes = sql.bytes();
        const int code =
            sqlite3_prepare_v2(m_database, bytes.data(), static_cast<int>(bytes.size()), &statement, &tail);
        EXPECT_EQ(code, SQLITE_OK) << sqlite3_errmsg(m_database);
        if (code != SQLITE_OK) return texts;
        EXPECT_EQ(tail, bytes.data() + bytes.size()) << "the statement ends early, before: " << tail;
        const int columns = sqlite3_column_count(statement);
        for (int i = 0; wantNames && i < columns; ++i)
            texts.emplace_back(sqlite3_column_name(statement, i));
        while (!wantNames && sqlite3_step(statement) == SQLITE_ROW)
            for (int i = 0; i < columns; ++i)
                texts.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(statement, i)),
                                   static_cast<std::size_t>(sqlite3_column_bytes(statement, i)));
        sqlite3_finalize(statement);
        return texts;
    }

private:
    sqlite3* m_database = nullptr;
};

// The text as a block of the macro language that yields it.
std::string AsBlock(std::string text) {
    for (std::size_t at = text.find('\''); at != std::string::npos; at = text.find('\'', at + 2))
        text.insert(at, 1, '\'');
    return "#'" + text + "'#";
}

// "#name($t0)#, #name($t1)#, ..." with `before` in front of each.
std::string OneCallForEach(const char* before, const char* name) {
    std::string list;
    for (std::size_t i = 0; i < kTextsInBatch; ++i)
        list += (i ? ", " : "") + std::string(before) + "#" + name + "($t" + std::to_string(i) + ")#";
    return list;
}

// As single parameters. One that is a block as a whole would be executed, so its place is taken by a block that yields
// it: that it comes back shows that what a block yields is quoted like any other text.
TEST(QuotingProof, SingleTextsComeBack) {
    Database database;
    AQM_I_MacroExpander expander;
    const std::string values = "select " + OneCallForEach("", "sq");
    const std::string names = "select " + OneCallForEach("1 as ", "dq");
    int blocks = 0;
    for (unsigned seed = 0; seed < kBatches; ++seed) {
        const Texts texts = RandomTexts(seed);
        Parameters parameters{};
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const bool isBlock = AQE_IsMacro(texts[i].c_str());
            blocks += isBlock;
            parameters.Set("t" + std::to_string(i), (isBlock ? AsBlock(texts[i]) : texts[i]).c_str());
        }
        EXPECT_THAT(database.Run(expander.Expand(values.c_str(), parameters.Get())), ElementsAreArray(texts)) << seed;
        EXPECT_THAT(database.Run(expander.Expand(names.c_str(), parameters.Get()), true), ElementsAreArray(texts))
            << seed;
        if (HasFailure()) break;
    }
    EXPECT_GT(blocks, 50);
}

// As one parameter of many values, whose values are never executed. A call that gives one text is, if the text is a
// block as a whole: the first value sees to it that the joined text is none.
TEST(QuotingProof, ListsComeBack) {
    Database database;
    AQM_I_MacroExpander expander;
    for (unsigned seed = 0; seed < kBatches; ++seed) {
        Texts texts = RandomTexts(seed);
        texts[0] = "head";
        Parameters parameters{};
        std::string joined;
        for (const std::string& text : texts) {
            parameters.Set("list", text.c_str());
            joined += (joined.empty() ? "" : "|'\"") + text;
        }
        parameters.Set("joined", joined.c_str());
        parameters.Set("separator", "|'\"");
        const std::set<std::string> sorted(texts.begin(), texts.end());
        Texts changed = texts;
        for (std::string& text : changed)
            if (const std::size_t at = text.find('\''); at != std::string::npos) text.replace(at, 1, "\"'");

        const auto expect = [&](const Texts& expected, const char* statement) {
            const bool wantNames = std::string_view(statement).find(" as ") < 12;
            EXPECT_THAT(database.Run(expander.Expand(statement, parameters.Get()), wantNames),
                        ElementsAreArray(expected))
                << "seed " << seed << ", " << statement;
        };
        expect(texts, "select #csv(@list)#");
        expect(texts, "select 1 as #csv(@list, ', 1 as ', '\"')#");
        expect(texts, "select #join(', ', sq(@list))#");
        expect({joined}, "select #sq(join($separator, @list))#");
        expect({joined}, "select 1 as #dq(join($separator, @list))#");
        expect(texts, "select #csv(split($separator, $joined))#");
        expect(texts, "select #csv(split('|', join('|', array(@list))))#");
        expect(Texts(sorted.begin(), sorted.end()), "select #csv(sort(unique(@list)))#");
        expect(changed, "select #csv(substitute(\"'\", '\"' + \"'\", @list))#");
        if (HasFailure()) break;
    }
}

// The line between a text and a block: what a parameter holds is executed before a function sees it if white space
// aside it begins with one '#' and ends with another; the values of a list are not.
TEST(QuotingProof, TextThatIsABlockAsAWholeIsExecutedFirst) {
    AQM_I_MacroExpander expander;
    const auto quoted = [&expander](const std::string& value) {
        const Parameters parameters{{"value", value.c_str()}, {"o", "it's"}};
        std::string result;
        const std::string failure =
            FailureOf([&] { result = expander.Expand("#sq($value)#", parameters.Get()).bytes(); });
        const std::string list(expander.Expand("#csv(@value)#", parameters.Get()).bytes());
        EXPECT_EQ(list, "'" + std::string(AQE_SearchAndReplace(value.c_str(), "'", "''").bytes()) + "'") << value;
        return failure == "nothing thrown" ? result : failure;
    };
    CheckRows(quoted, "#$o# -> 'it''s'", "#'x'# -> 'x'", "#no block -> '#no block'", "no block# -> 'no block#'",
              "x #$o# -> 'x #$o#'", " #$o#\n -> ' it''s\n'", "#'a'# or #$o# -> 'a or it''s'", "## -> ''", "# -> '#'",
              "'#$o#' -> '''#$o#'''", "#'#$o#'# -> '#$o#'", "#sq($o)# -> '''it''''s'''",
              "#$o# # #$o# -> QEExceptionExtended 901 0x35df687a(12, \"#$o# # #$o#\") @12 macro Source/QUYyError:251");
    const Parameters parameters{{"value", "#$o"}, {"value", "#"}, {"o", "it's"}};
    EXPECT_EQ(expander.Expand("#sq(join('', @value))#", parameters.Get()), "'it''s'");
    EXPECT_EQ(expander.Expand("#csv(@value, '', '#')#", parameters.Get()), "it's");
}

} // namespace
