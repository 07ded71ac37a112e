#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

using namespace std::string_view_literals;

namespace {

ZBLIDOM_Document newDocument() {
    return ZBLIDOM_DOMImplementation::getInstance().createDocument("", "old", ZBLIDOM_DocumentType());
}

std::string xml(const ZBLIDOM_Node& node) { return ZBLIDOM_Helper::serialize(node).c_str(); }

// The failure's message, which begins with its position; empty if the bytes were read.
std::string failureOf(std::string_view bytes, ZBLIDOM_Document document = newDocument()) {
    try {
        ZBLIDOM_Parser(0).parseText(bytes, document);
        return {};
    } catch (const ZBLIDOM_Exception& e) {
        EXPECT_EQ(-1, e.getCode());
        EXPECT_TRUE(document.getFirstChild().isNull()) << "content is left";
        const std::string position = std::to_string(e.getLine()) + ":" + std::to_string(e.getColumn()) + ":";
        EXPECT_TRUE(e.getLine() == 0 || e.getMessage().bytes().starts_with(position)) << position;
        return e.getMessage().c_str();
    }
}

std::string utf16(std::u16string_view units, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : units) {
        bytes += static_cast<char>(bigEndian ? unit >> 8 : unit & 0xFF);
        bytes += static_cast<char>(bigEndian ? unit & 0xFF : unit >> 8);
    }
    return bytes;
}

std::string repeated(std::string_view piece, long times) {
    std::string result;
    while (times-- > 0)
        result += piece;
    return result;
}

} // namespace

TEST(DocumentParser, ReadsIntoTheTree) {
    const struct {
        std::string_view input, expected;
        long children;
    } rows[] = {
        {"<?xml version='1.0'?>\n<!--c--><?p i?><r/>\n<!--c-->", "<r/>", 0},
        {"<r>a<!--c-->b<?p i?>&amp;&#x41;&#66;</r>", "<r>ab&amp;AB</r>", 1},
        {"<r> <e/>\n<e> </e></r>", "<r> <e/>\n<e> </e></r>", 4},
        {"<r>a<![CDATA[]]><![CDATA[<x>\n]]>b</r>", "<r>a<![CDATA[]]><![CDATA[<x>\n]]>b</r>", 4},
        {"<r a:b='2' a=\"x\n\ty&#10;&lt;'\"><q:e/></r>", "<r a:b=\"2\" a=\"x  y&#10;&lt;'\"><q:e/></r>", 1},
        {"<r>a\r\nb\rc&#13;</r>", "<r>a\nb\nc\r</r>", 1},
        {"\xEF\xBB\xBF<r>\u00E4\u20AC\U0001F600</r>", "<r>\u00E4\u20AC\U0001F600</r>", 1},
        {"<?xml version='1.0' encoding='iso-8859-1'?><r>\x80\xFF</r>", "<r>\u0080\u00FF</r>", 1},
        {"<?xml version='1.0' encoding='Windows-1252'?><r>\x80\x9F\xA0</r>", "<r>\u20AC\u0178\u00A0</r>", 1},
        {"", "", 0},
        {" \t\r\n", "", 0},
        {"\xEF\xBB\xBF \n", "", 0},
        {"\xFF\xFE"sv, "", 0},
        {"\xFE\xFF\0 "sv, "", 0},
    };
    for (const auto& row : rows) {
        ZBLIDOM_Document document = newDocument();
        EXPECT_EQ("", failureOf(row.input, document)) << row.input;
        EXPECT_EQ(row.expected, xml(document)) << row.input;
        EXPECT_EQ(row.children, document.getDocumentElement().getChildNodes().getLength()) << row.input;
    }
}

TEST(DocumentParser, RefusesWithThePosition) {
    const std::string invalid = "not well-formed (invalid token)", unknown = "1:31: unknown encoding";
    const std::string doctype = "a document type declaration is not allowed";
    const std::string mark = "1:1: the encoding declared is not that of the byte-order mark";
    const std::string noMark = "1:1: UTF-16 without a byte-order mark";
    const std::pair<std::string_view, std::string> rows[] = {
        {"<r>\n\u00E4\u20AC<e></r>", "2:8: mismatched tag"},
        {"<r a='1' b='2' a='3'/>", "1:16: duplicate attribute"},
        {"<r>", "1:4: no element found"},
        {"<r/><r/>", "1:5: junk after document element"},
        {"<r>&e;</r>", "1:4: undefined entity"},
        {"<!DOCTYPE r SYSTEM 'file:///etc/passwd'><r/>", "1:40: " + doctype},
        {"\n<!DOCTYPE r [<!ENTITY e 'x'><!ENTITY f '&e;&e;'>]><r>&f;</r>", "2:13: " + doctype},
        {"<r>\xC0\x80</r>", "1:4: " + invalid},
        {"<r>\xED\xA0\x80</r>", "1:4: " + invalid},
        {"<r>a\0</r>"sv, "1:5: " + invalid},
        {"<r>&#1;</r>", "1:4: reference to invalid character number"},
        {"<?xml version='1.0' encoding='US-ASCII'?><r>\xE4</r>", "1:45: " + invalid},
        {"<?xml version='1.0' encoding='windows-1252'?><r>\x81</r>", "1:49: " + invalid},
        {"<?xml version='1.0' encoding='windows-12520'?><r/>", unknown},
        {"<?xml version='1.0' encoding='iso-8859-2'?><r/>", unknown},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='iso-8859-1'?><r/>", mark},
        {"\xFF\xFE \0 "sv, "1:2: unclosed token"},
        {"<\0r\0/\0>\0"sv, noMark},
        {"\0<\0r\0/\0>"sv, noMark},
    };
    for (const auto& [input, expected] : rows)
        EXPECT_EQ(expected, failureOf(input)) << input;
}

TEST(DocumentParser, ReadsBothOrdersOfUtf16AndRefusesHalfPairs) {
    const std::pair<std::u16string_view, const char*> rows[] = {
        {u"\uFEFF<?xml version='1.0' encoding='UTF-16'?><r>\u00E4\U0001F600\uFFFD</r>", ""},
        {u"\uFEFF<r>\r\n\U0001F600\xD800</r>", "2:2: lone surrogate"}, // must not swallow the "<"
        {u"\uFEFF<r>\r\xDC00</r>", "2:1: lone surrogate"},
        {u"\uFEFF<r/>\xD800", "1:5: lone surrogate"},
        {u"\uFEFF<r>\xD800\xE000</r>", "1:4: lone surrogate"},
        {u"\uFEFF<?xml version='1.0' encoding='windows-1252'?><r/>",
         "1:1: the encoding declared is not that of the byte-order mark"},
    };
    for (const auto& [units, expected] : rows)
        for (const bool bigEndian : {false, true}) {
            ZBLIDOM_Document document = newDocument();
            EXPECT_EQ(expected, failureOf(utf16(units, bigEndian), document)) << bigEndian;
            EXPECT_EQ(*expected ? "" : "<r>\u00E4\U0001F600\uFFFD</r>", xml(document)) << bigEndian;
        }
}

TEST(DocumentParser, RefusesWhatExceedsItsBounds) {
    EXPECT_EQ("", failureOf(repeated("<e>", 512) + repeated("</e>", 512)));
    EXPECT_EQ("", failureOf("<r>" + repeated("<e/>", 1000) + "</r>"));
    EXPECT_EQ("2:1: more than 512 nested elements", failureOf(repeated("<e>", 512) + "\n<e/>" + repeated("</e>", 512)));
    std::string attributes;
    for (int i = 0; i < 1'000'000; ++i)
        attributes += " n" + std::to_string(i) + "='v'";
    ZBLIDOM_Document document = newDocument();
    EXPECT_EQ("", failureOf("<r" + attributes + "/>", document));
    EXPECT_EQ("v", document.getDocumentElement().getAttribute("n999999"));
    EXPECT_EQ("2:2: more than 1000000 attributes of one element", failureOf("<r>\n <e" + attributes + " n='v'/></r>"));
    EXPECT_EQ("more than 1073741824 bytes", failureOf({"<r/>", (1UL << 30) + 1}));
}

TEST(DocumentParser, ReplacesTheContentAndLeavesFormerNodesToTheirHandles) {
    ZBLIDOM_Document document = newDocument();
    const ZBLIDOM_Document second = document;
    const ZBLIDOM_Node old = document.getDocumentElement().appendChild(document.createElement("child"));
    EXPECT_EQ("", failureOf("<new/>", document));
    EXPECT_EQ("<new/>", xml(second));
    EXPECT_EQ("<old><child/></old>", xml(old.getParentNode()));
    EXPECT_TRUE(old.getParentNode().getParentNode().isNull());
    document.getDocumentElement().appendChild(old);
    EXPECT_EQ("<new><child/></new>", xml(second));
    EXPECT_EQ("1:4: no element found", failureOf("<r>", document));
    EXPECT_EQ("<new><child/></new>", xml(old.getParentNode()));
    EXPECT_EQ("there is no document to read into", failureOf("<r/>", ZBLIDOM_Document()));
}

TEST(DocumentParser, ReadsFilesAndNamesThemInFailures) {
    const std::string directory = ::testing::TempDir(), path = directory + "document-\u00E4.xml";
    const std::string unreadable = ": not a readable file of at most 1073741824 bytes";
    const struct {
        const char* content; // null: no file
        std::string path, expected, failure;
    } rows[] = {
        {"<r>\u00E4</r>", path, "<r>\u00E4</r>", ""},        {"", path, "", ""},
        {"<r>\n<", path, "", path + ":2:1: unclosed token"}, {nullptr, path, "", path + unreadable},
        {nullptr, directory, "", directory + unreadable},    {"<r/>", path + '\0', "", path + '\0' + unreadable},
    };
    for (const auto& row : rows) {
        if (row.content) std::ofstream(path) << row.content;
        ZBLIDOM_Document document = newDocument();
        std::string failure;
        try {
            ZBLIDOM_Parser(0).parse(I18NString(std::string_view(row.path)), document);
        } catch (const ZBLIDOM_Exception& e) {
            failure = e.getMessage().bytes();
            EXPECT_EQ(row.path, e.getPath().bytes());
        }
        EXPECT_EQ(row.failure, failure);
        EXPECT_EQ(row.expected, xml(document)) << row.failure;
        std::filesystem::remove(path);
    }
}

TEST(DocumentParser, ReadsBackWhatWasWritten) {
    const unsigned seed = 20;
    std::mt19937 random(seed);
    const auto text = [&] {
        const char* const pieces[] = {"&",  "<",  "]]>", "]",      "\"",     "'",
                                      "\t", "\n", "a",   "\u00E4", "\uFEFF", "\U0001F600"};
        std::string result = "x";
        for (auto count = random() % 12; count > 0; --count)
            result += pieces[random() % std::size(pieces)];
        return I18NString(std::string_view(result));
    };
    for (int round = 0; round < 300; ++round) {
        const ZBLIDOM_Document document = newDocument();
        ZBLIDOM_Element open = document.getDocumentElement();
        for (auto count = random() % 40; count > 0; --count) {
            open.setAttribute("n", text());
            open.appendChild(random() % 2 ? document.createTextNode(text()) : document.createCDATASection(text()));
            const ZBLIDOM_Element element(open.appendChild(document.createElement("e")));
            if (random() % 3 == 0) open = element;
        }
        ZBLIDOM_Document again = newDocument();
        EXPECT_EQ("", failureOf(xml(document), again));
        ASSERT_EQ(xml(document), xml(again)) << "seed " << seed << ", round " << round;
    }
}
