#include <tuple>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

#include "Support/Directory.h"

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
        EXPECT_TRUE(document.getFirstChild().isNull()) << "content is left";
        const std::string position = std::to_string(e.getLine()) + ":" + std::to_string(e.getColumn()) + ":";
        EXPECT_TRUE(e.getLine() == 0 || e.getMessage().bytes().starts_with(position)) << position;
        return e.getMessage().c_str();
    }
}

// Likewise for a file, whose name is in front of the position.
std::string failureOfFile(std::string_view path, ZBLIDOM_Document& document) {
    try {
        ZBLIDOM_Parser(0).parse(I18NString(path), document);
        return {};
    } catch (const ZBLIDOM_Exception& e) {
        EXPECT_EQ(path, e.getPath().bytes());
        return std::string(e.getMessage().bytes());
    }
}

} // namespace

TEST(DocumentParser, ReadsIntoTheTree) {
    const std::tuple<std::string_view, std::string_view, long> rows[] = {
        {"<?xml version='1.0'?>\n<!--c--><?p i?><r>a\r\n<!--c-->b\r<?p i?>&amp;&#x41;&#66;&#13;</r>\n<!--c-->",
         "<r>a\nb\n&amp;AB&#13;</r>", 1},
        {"<r>a<![CDATA[]]><![CDATA[<x>\n]]>b</r>", "<r>a<![CDATA[]]><![CDATA[<x>\n]]>b</r>", 4},
        {"<r a:b='2' a=\"x\n\ty&#10;&lt;'\"><q:e/></r>", "<r a:b=\"2\" a=\"x  y&#10;&lt;'\"><q:e/></r>", 1},
        {"\xEF\xBB\xBF<r>\u00E4\u20AC\U0001F600</r>", "<r>\u00E4\u20AC\U0001F600</r>", 1},
        {"<?xml version='1.0' encoding='iso-8859-1'?><r>\x80\xFF</r>", "<r>\u0080\u00FF</r>", 1},
        {"<?xml version='1.0' encoding='iso-8859-1'?><r\xB7\xE9/>", "<r\u00B7\u00E9/>", 0},
        {"<?xml version='1.0' encoding='Windows-1252'?><r>\x80\x9F\xA0</r>", "<r>\u20AC\u0178\u00A0</r>", 1},
        {"\xEF\xBB\xBF \t\r\n", "", 0},
        {"\xFE\xFF\0 "sv, "", 0}};
    for (const auto& [input, expected, children] : rows) {
        ZBLIDOM_Document document = newDocument();
        EXPECT_EQ("", failureOf(input, document)) << input;
        EXPECT_EQ(expected, xml(document)) << input;
        EXPECT_EQ(children, document.getDocumentElement().getChildNodes().getLength()) << input;
    }
}

TEST(DocumentParser, RefusesWithThePosition) {
    const std::string invalid = "not well-formed (invalid token)", noMark = "1:1: UTF-16 without a byte-order mark";
    const std::pair<std::string_view, std::string> rows[] = {
        {"\xEF\xBB\xBF<r>\n\u00E4\u20AC<e></r>", "2:8: mismatched tag"},
        {"\n<!DOCTYPE r [<!ENTITY e 'x'><!ENTITY f '&e;&e;'>]><r>&f;</r>",
         "2:13: a document type declaration is not allowed"},
        {"<r>\xED\xA0\x80</r>", "1:4: " + invalid},
        {"<?xml version='1.0' encoding='windows-1252'?><r>\x81</r>", "1:49: " + invalid},
        {"<?xml version='1.0' encoding='iso-8859-1'?><r\xBA/>", "1:44: " + invalid}, // no name in any other encoding
        {"<?xml version='1.0' encoding='iso-8859-1'?><r r\xAA=''/>", "1:44: " + invalid},
        {"<?xml version='1.0' encoding='windows-12520'?><r/>", "1:31: unknown encoding"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='iso-8859-1'?><r/>",
         "1:1: the encoding declared is not that of the byte-order mark"},
        {"\xFF\xFE \0 "sv, "1:2: unclosed token"},
        {"\0<\0r\0/\0>"sv, noMark},
        {"<\0r\0/\0>\0"sv, noMark}};
    for (const auto& [input, expected] : rows)
        EXPECT_EQ(expected, failureOf(input)) << input;
}

TEST(DocumentParser, ReadsBothOrdersOfUtf16AndRefusesHalfPairs) {
    const std::pair<std::u16string_view, const char*> rows[] = {
        {u"\uFEFF<?xml version='1.0' encoding='UTF-16'?><r>\u00E4\U0001F600\uFFFD</r>", ""},
        {u"\uFEFF<r>\r\n\U0001F600\xD800</r>", "2:2: lone surrogate"}, // must not swallow the "<"
        {u"\uFEFF<r>\r\xDC00</r>", "2:1: lone surrogate"},
        {u"\uFEFF<r>\xD800\xE000</r>", "1:4: lone surrogate"}};
    for (const auto& [units, expected] : rows) {
        std::string bytes[2]; // the low byte first, the high byte first
        for (const char16_t unit : units)
            for (const unsigned shift : {0U, 8U}) {
                bytes[0] += static_cast<char>(unit >> shift);
                bytes[1] += static_cast<char>(unit >> (8U - shift));
            }
        for (const std::string& input : bytes) {
            ZBLIDOM_Document document = newDocument();
            EXPECT_EQ(expected, failureOf(input, document));
            EXPECT_EQ(*expected ? "" : "<r>\u00E4\U0001F600\uFFFD</r>", xml(document));
        }
    }
}

TEST(DocumentParser, RefusesWhatExceedsItsBounds) {
    std::string nested = "<e/>", tooDeep = "<e>\n<e/></e>", attributes;
    for (int i = 0; i < 511; ++i) {
        nested = "<e>" + nested + "<e/></e>";
        tooDeep = "<e>" + tooDeep + "</e>";
    }
    EXPECT_EQ("", failureOf(nested));
    EXPECT_EQ("2:1: more than 512 nested elements", failureOf(tooDeep));
    for (int i = 0; i < 1'000'000; ++i)
        attributes += " n" + std::to_string(i) + "='v'";
    ZBLIDOM_Document document = newDocument();
    EXPECT_EQ("", failureOf("<r" + attributes + "/>", document));
    EXPECT_EQ("v", document.getDocumentElement().getAttribute("n999999"));
    EXPECT_EQ("2:2: more than 1000000 attributes of one element", failureOf("<r>\n <e" + attributes + " n='v'/></r>"));
    EXPECT_EQ("more than 1073741824 bytes", failureOf({"<r/>", (1UL << 30) + 1}));
}

#ifdef __SANITIZE_THREAD__
constexpr long kMostKilobytes = 4'000'000; // which has memory of its own beside the program's
#else
constexpr long kMostKilobytes = 1'000'000;
#endif

TEST(DocumentParser, HostileFilesCostLittleMemory) {
    const brindle_test::Directory directory;
    const std::string path = directory.m_directory + "/hostile.xml";
    const std::string doctype = ": a document type declaration is not allowed", attribute(100 << 20, 'x');
    std::string nested;
    for (int i = 0; i < 1'000'000; ++i)
        nested += "<e>";
    rusage before, after;
    ::getrusage(RUSAGE_SELF, &before);
    for (const auto& [content, expected] :
         {std::pair(std::string("<?xml version='1.0'?>\n<!DOCTYPE r SYSTEM '/dev/zero'>\n<r/>"), ":2:31" + doctype),
          {nested, ":1:1537: more than 512 nested elements"},
          {"<r a='" + attribute + "'/>", ""},
          {"<r a='" + attribute, ":1:1: unclosed token"}}) {
        directory.Write(path, content);
        ZBLIDOM_Document document = newDocument();
        EXPECT_EQ(expected.empty() ? "" : path + expected, failureOfFile(path, document)) << content.substr(0, 80);
        EXPECT_EQ(expected.empty(), document.getDocumentElement().getAttribute("a").bytes() == attribute);
    }
    ::getrusage(RUSAGE_SELF, &after);
    EXPECT_LT(after.ru_maxrss - before.ru_maxrss, kMostKilobytes);
}

TEST(DocumentParser, ReplacesTheContentAndLeavesFormerNodesToTheirHandles) {
    ZBLIDOM_Document document = newDocument();
    const ZBLIDOM_Document second = document;
    const ZBLIDOM_Node old = document.getDocumentElement().appendChild(document.createElement("child"));
    EXPECT_EQ("", failureOf("<new/>", document));
    EXPECT_EQ("<old><child/></old>", xml(old.getParentNode()));
    document.getDocumentElement().appendChild(old);
    EXPECT_EQ("<new><child/></new>", xml(second));
    EXPECT_EQ("1:4: no element found", failureOf("<r>", document));
    EXPECT_EQ("<new><child/></new>", xml(old.getParentNode()));
    EXPECT_EQ("there is no document to read into", failureOf("<r/>", ZBLIDOM_Document()));
}

TEST(DocumentParser, ReadsFilesAndNamesThemInFailures) {
    const brindle_test::Directory files;
    const std::string& directory = files.m_directory;
    const std::string path = directory + "/document-\u00E4.xml";
    const std::string unreadable = ": not a readable file of at most 1073741824 bytes";
    const std::tuple<const char*, std::string, std::string, std::string> rows[] = {
        {"<r>\u00E4</r>", path, "<r>\u00E4</r>", ""},        {"", path, "", ""},
        {"<r>\n<", path, "", path + ":2:1: unclosed token"}, {nullptr, path, "", path + unreadable},
        {nullptr, directory, "", directory + unreadable},    {"<r/>", path + '\0', "", path + '\0' + unreadable}};
    for (const auto& [content, name, expected, message] : rows) {
        if (content) files.Write(path, content);
        ZBLIDOM_Document document = newDocument();
        EXPECT_EQ(message, failureOfFile(name, document));
        EXPECT_EQ(expected, xml(document)) << message;
        std::filesystem::remove(path);
    }
}
