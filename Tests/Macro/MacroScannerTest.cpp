// The division of a text into tokens. The scanner stands alone here: where the parser would have it read a name in
// brackets, the helper does.
#include <cctype>

#include "QMMacroGrammar.h"
#include "QMMacroParserPool.h"
#include "QMTextScan.h"
#include "Support/FailureCheck.h"
#include "Support/Rows.h"

namespace {

using namespace brindle_test;
using ECondition = QMX_MacroExpanderLexer::ECondition;

// The tokens' numbers, and behind them "<plain text>", "<string's value>" or "<name>"; or the failure.
std::string Scanned(std::string_view text) {
    QMX_ParserSet set;
    QMX_MacroExpanderLexer& lexer = set.lexer;
    set.input.SetText(text.data(), text.size());
    lexer.Start(EMacroRunMode::expansion);
    std::string tokens;
    const std::string failure = FailureOf([&] {
        bool isNameDue = false;
        for (int token = -1; token != yy_eof;) {
            QMX_TokenValue value{nullptr};
            token = lexer.NextToken(value);
            tokens += (tokens.empty() ? "" : " ") + std::to_string(token);
            const bool isName = token == Identifier;
            const std::size_t begin = isName ? lexer.GetNameBegin() : lexer.GetTokenBegin();
            const std::size_t end = isName ? lexer.GetNameEnd() : lexer.GetTokenEnd();
            const std::string_view written = text.substr(begin, end - begin);
            if (token >= AnyChar && token <= Identifier)
                tokens += "<" + std::string(value.symbol ? value.symbol->bytes() : written) + ">";
            if (token == OpenBracket && isNameDue) lexer.SetCondition(ECondition::bracket);
            if (isName || token == RBRACKET) lexer.SetCondition(ECondition::macro);
            isNameDue = token == Dollar || token == Percent || token == AtSign;
        }
    });
    return failure == "nothing thrown" ? tokens : failure;
}

TEST(MacroScanner, PlainTextRunsToTheHashThatNoFormProtects) {
    // Behind each of these texts stands one more "#", which opens a block.
    const char* const plain[] = {
        "a b\n", "'#'",   "'a''#'",  "''",     "'''#'''",         "\"#\"\"#\"", "'\"'", "[#]]#[]", "?#?",
        "??#?",  "?\?\?", "?'?",     "/*#**/", "/*/#*/",          "/",          "*/",   "-",       "//",
        "--#\n", "--#\r", "--'\r\n", "a]",     "\u00e9'\u20ac#'", "?\?\?\?#?"};
    for (const std::string text : plain)
        EXPECT_EQ(Scanned(text + "#"), "2<" + text + "> 1 0");
    CheckRows(Scanned, " -> 0", "--#' -> 2<--#'> 0", "-- -> 2<--> 0", "##a -> 1 1 2<a> 0", "#### -> 1 1 1 1 0");
}

TEST(MacroScanner, BlocksAreDividedIntoTheirTokens) {
    CheckRows(Scanned, "#,;$%@()[]{}+# -> 1 5 5 6 7 8 9 10 11 12 13 14 15 1 0", "#a''b -> 1 4<a> 3<> 4<b> 0",
              "#a.b_1\u00e9\u00a0Z# -> 1 4<a.b_1\u00e9\u00a0Z> 1 0", "#\u20ac# -> 1 4<\u20ac> 1 0", "#a -> 1 4<a> 0",
              "#a\tb\nc\rd e\"\"f# -> 1 4<a> 4<b> 4<c> 4<d> 4<e> 3<> 4<f> 1 0",
              "#a$b%c(e)f+g,h/**/i -> 1 4<a> 6 4<b> 7 4<c> 9 4<e> 10 4<f> 15 4<g> 5 4<h> 4<i> 0",
              "#i;j@k[l]m{n}o -> 1 4<i> 5 4<j> 8 4<k> 11 4<l> 12 4<m> 13 4<n> 14 4<o> 0",
              "#\t\r\n $ \n a # -> 1 6 4<a> 1 0", "#/*a**/$/**/b//#'\n# -> 1 6 4<b> 1 0",
              "#//\r\n//\r//\n\"\"# -> 1 3<> 1 0", "#/*/#*/#a -> 1 1 2<a> 0", "#$[#'\"\n$]# -> 1 6 11 4<#'\"\n$> 1 0",
              "#%[ ]@[]]# -> 1 7 11 4< > 8 11 16 12 1 0", "#$[ -> 1 6 11 0",
              "#$[a]]b]]]c]# -> 1 6 11 4<a]]b]]> 4<c> 12 1 0", "#$[\u20ac] -> 1 6 11 4<\u20ac> 0");
}

// What may go on with a name can't begin one, nor follow anything but a name.
TEST(MacroScanner, BytesThatBeginNoTokenAreIllegal) {
    const std::string_view blanks = "\t\n\r ", illegal = "!&*-.0123456789:<=>?\\^_`|~\x7f";
    for (int code = 0; code < 128; ++code) {
        const char byte = static_cast<char>(code);
        if (byte == '\'' || byte == '"' || byte == '/') continue; // begin what has to end
        const bool isIllegal = (code < 32 && blanks.find(byte) == blanks.npos) || illegal.find(byte) != illegal.npos;
        for (const std::string before : {"#", "# ", "#''", "#a", "#$", "#/**/", "#//\r", "#//\n"}) {
            const bool isRefused = isIllegal && (before != "#a" || (byte != '.' && byte != '_' && !std::isdigit(code)));
            const std::string text = before + byte, tokens = Scanned(text);
            const std::string end = "@" + std::to_string(text.size() + 1) + " macro Source/QUYyError:256";
            EXPECT_TRUE(isRefused ? tokens.ends_with(end) : tokens.ends_with(" 0")) << before << code << ": " << tokens;
        }
    }
}

// Every byte at every place of two steps of the wide search, at every start.
TEST(MacroTextScan, WideSearchStopsWhereTheSearchByByteDoes) {
    std::string text(70, 'a');
    for (int byte = 0; byte < 256; ++byte)
        for (std::size_t place = 0; place < text.size(); ++place) {
            text[place] = static_cast<char>(byte);
            const char* const end = text.data() + text.size();
            for (const std::size_t start : {std::size_t{0}, std::size_t{5}, place, place + 1}) {
                const char* const at = text.data() + start;
                ASSERT_EQ(QMFindTextStop(at, end), QMFindTextStopByByte(at, end)) << byte << " at " << place;
                ASSERT_EQ(QMFindLineEnd(at, end), QMFindLineEndByByte(at, end)) << byte << " at " << place;
            }
            text[place] = 'a';
        }
}

} // namespace
