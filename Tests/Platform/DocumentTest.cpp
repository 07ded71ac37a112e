#include <array>
#include <functional>

#include <gtest/gtest.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

#include "Support/FailureCheck.h"

namespace {

ZBLIDOM_Document newDocument(const char* root = "r") {
    return ZBLIDOM_DOMImplementation::getInstance().createDocument("", root, ZBLIDOM_DocumentType());
}

ZBLIDOM_Document parsed(const char* xml) {
    ZBLIDOM_Document document = newDocument();
    ZBLIDOM_Parser(0).parseText(xml, document);
    return document;
}

ZBLIDOM_Element tagged(const ZBLIDOM_Document& document, const char* tag) {
    return ZBLIDOM_Element(document.getElementsByTagName(tag).item(0));
}

std::string xml(const ZBLIDOM_Node& node) { return ZBLIDOM_Helper::serialize(node).c_str(); }

std::string names(const ZBLIDOM_NodeList& list) {
    std::string joined;
    for (long i = 0; i < list.getLength(); ++i)
        joined += ZBLIDOM_Element(list.item(i)).getAttribute("n").c_str();
    return joined;
}

} // namespace

// Each row moves one element below another, then appends a new one there, which shows that the end is still known.
TEST(DocumentTree, AMovedNodeLeavesItsSiblingsLinked) {
    const std::array<const char*, 3> rows[] = {
        {"a", "r", "<r><b/><c><x/><y/></c><a/><new/></r>"},    {"b", "r", "<r><a/><c><x/><y/></c><b/><new/></r>"},
        {"c", "r", "<r><a/><b/><c><x/><y/></c><new/></r>"},    {"x", "r", "<r><a/><b/><c><y/></c><x/><new/></r>"},
        {"c", "a", "<r><a><c><x/><y/></c><new/></a><b/></r>"}, {"y", "x", "<r><a/><b/><c><x><y/><new/></x></c></r>"}};
    for (const auto& [moved, targetTag, expected] : rows) {
        const ZBLIDOM_Document document = parsed("<r><a/><b/><c><x/><y/></c></r>");
        const ZBLIDOM_Element target = tagged(document, targetTag);
        const ZBLIDOM_Node source = tagged(document, moved).getParentNode();
        EXPECT_EQ(tagged(document, moved), target.appendChild(tagged(document, moved)));
        target.appendChild(document.createElement("new"));
        EXPECT_EQ(expected, xml(document));
        const ZBLIDOM_Node last = source.appendChild(document.createElement("last"));
        const ZBLIDOM_NodeList children = source.getChildNodes();
        EXPECT_EQ(last, children.item(children.getLength() - 1)) << moved << " to " << targetTag;
    }
}

TEST(DocumentTree, RefusedChangesThrowAndLeaveTheTree) {
    const ZBLIDOM_Document document = parsed("<r><a><b>t</b></a></r>");
    const ZBLIDOM_Element r = document.getDocumentElement(), a = tagged(document, "a"), b = tagged(document, "b");
    const ZBLIDOM_Document empty = newDocument("");
    const std::string below = "a node cannot be appended to itself or to a node below it";
    const std::string onlyElement = "a document takes one element and nothing else";
    const std::pair<std::function<void()>, std::string> rows[] = {
        {[&] { b.appendChild(r); }, below},
        {[&] { a.appendChild(a); }, below},
        {[&] { b.appendChild(document); }, "a document cannot be appended"},
        {[&] { b.getFirstChild().appendChild(document.createElement("e")); }, "a text cannot have children"},
        {[&] { a.appendChild(empty.createTextNode("t")); }, "a node of another document cannot be appended"},
        {[&] { a.appendChild(ZBLIDOM_Node()); }, "a null node cannot be appended"},
        {[&] { document.appendChild(b); }, onlyElement},
        {[&] { empty.appendChild(empty.createTextNode("t")); }, onlyElement},
        {[&] { ZBLIDOM_Element().setAttribute("n", "v"); }, "a null node cannot be changed"}};
    for (const auto& [change, message] : rows) {
        EXPECT_TRUE(
            brindle_test::FailureOf(change).starts_with("ZBLIDOM_Exception -1 [text]" + message + " Platform/"));
        EXPECT_EQ("<r><a><b>t</b></a></r>", xml(document)) << message;
    }
    EXPECT_EQ(r, document.appendChild(r)) << "the document element may be appended again";
}

TEST(DocumentTree, HandlesKeepTheDocumentAndAnswerEmptyOrNull) {
    const ZBLIDOM_Node null, text = parsed("<r a='1'>deep</r>").getDocumentElement().getFirstChild();
    EXPECT_EQ("<r a=\"1\">deep</r>", xml(text.getOwnerDocument())) << "any handle keeps the whole document";
    EXPECT_TRUE(!null.getParentNode() && !null.getFirstChild() && !null.getNextSibling() && !null.getOwnerDocument());
    EXPECT_EQ(0, null.getChildNodes().getLength() + null.getNodeType() + null.getNodeName().size());
    EXPECT_EQ("", ZBLIDOM_Element().getAttribute("n") + ZBLIDOM_Helper::getElementText(null) + xml(null).c_str());
    const ZBLIDOM_Document document = parsed("<r>t<![CDATA[<c>]]><i>no</i><!--no--> u</r>");
    EXPECT_EQ("t<c> u", ZBLIDOM_Helper::getElementText(document.getDocumentElement()));
    const ZBLIDOM_NodeList children = document.getDocumentElement().getChildNodes();
    EXPECT_TRUE(!ZBLIDOM_Element(children.item(0)) && !ZBLIDOM_Text(document) && !ZBLIDOM_Document(children.item(0)));
    EXPECT_EQ("<c>", ZBLIDOM_Text(children.item(1)).getNodeValue());
    EXPECT_TRUE(!children.item(-1) && !children.item(4) && !newDocument("").getDocumentElement());
}

TEST(DocumentTree, DescendantsComeInDocumentOrderAndAsTheyWere) {
    const ZBLIDOM_Document document = parsed("<e n='1'><x><e n='2'><e n='3'/></e></x><p:e n='4'/>e<E/><e n='6'/></e>");
    const ZBLIDOM_Element root = document.getDocumentElement();
    const ZBLIDOM_NodeList before = root.getElementsByTagName("e");
    tagged(document, "x").appendChild(document.createElement("e"));
    EXPECT_EQ("236", names(before));
    EXPECT_EQ("1236", names(document.getElementsByTagName("e")));
    EXPECT_EQ(0, root.getElementsByTagName("*").getLength() + root.getElementsByTagName("#text").getLength());
}

// From the 33rd attribute on an element has an index; both ways of finding must agree.
TEST(DocumentAttributes, AreFoundReplacedAndKeptInOrderAtAnyNumber) {
    const ZBLIDOM_Document document = newDocument();
    const ZBLIDOM_Element element = document.getDocumentElement();
    std::string expected;
    for (int i = 0; i < 70; ++i) {
        const std::string name = "n" + std::to_string(i);
        element.setAttribute(name.c_str(), "a longer one");
        element.setAttribute(name.c_str(), "it");
        expected += " " + name + "=\"it\"";
        ASSERT_EQ("<r" + expected + "/>", xml(element));
        for (int known = 0; known <= i; ++known)
            ASSERT_EQ("it", element.getAttribute(("n" + std::to_string(known)).c_str())) << known << " of " << i;
        ASSERT_TRUE(element.getAttribute(("n" + std::to_string(i + 1)).c_str()).empty());
        ASSERT_TRUE(element.getAttribute("r").empty()) << "a name that the document knows, but not as an attribute";
    }
}

TEST(DocumentText, IsWrittenSoThatItReadsBack) {
    const std::array<std::string, 4> rows[] = {
        {"a&b<c>\"'", "a&amp;b&lt;c&gt;\"'", "a&amp;b&lt;c&gt;&quot;'", "a&b<c>\"'"},
        {"\t\n\r", "\t\n&#13;", "&#9;&#10;&#13;", "\t\n\r"},
        {"]]>]]]>", "]]&gt;]]]&gt;", "]]&gt;]]]&gt;", "]]]]><![CDATA[>]]]]]><![CDATA[>"},
        {"\x01\x1F\x7F\uFFFE\uFFFFx", "\uFFFD\uFFFD\x7F\uFFFD\uFFFDx", "\uFFFD\uFFFD\x7F\uFFFD\uFFFDx",
         "\uFFFD\uFFFD\x7F\uFFFD\uFFFDx"}};
    for (const auto& [value, text, attribute, cdata] : rows) {
        const ZBLIDOM_Document document = newDocument();
        const ZBLIDOM_Element element = document.getDocumentElement();
        element.setAttribute("n", value.c_str());
        element.appendChild(document.createTextNode(value.c_str()));
        element.appendChild(document.createCDATASection(value.c_str()));
        EXPECT_EQ("<r n=\"" + attribute + "\">" + text + "<![CDATA[" + cdata + "]]></r>", xml(element));
        EXPECT_EQ((value + value).c_str(), ZBLIDOM_Helper::getElementText(element)) << "what is held stays";
        EXPECT_TRUE(value.back() == '\r' || xml(element) == xml(parsed(xml(element).c_str())))
            << "reads back: " << text;
    }
    EXPECT_EQ("\uFFFD", xml(newDocument().createTextNode(I18NString("\0", 1))));
}

// A walk by recursion would overflow the stack here, and a walk per appended node would take hours.
TEST(DocumentSize, DeepAndWideDocumentsAreBuiltSearchedAndWritten) {
    constexpr long kNodes = 500'000;
    const ZBLIDOM_Document document = newDocument();
    ZBLIDOM_Node deepest = document.getDocumentElement();
    for (long i = 0; i < kNodes; ++i)
        deepest = deepest.appendChild(document.createElement("d"));
    ZBLIDOM_Node top = document.createElement("u");
    for (long i = 0; i < kNodes; ++i)
        top = document.createElement("u").appendChild(top).getParentNode();
    deepest.appendChild(top);
    for (long i = 0; i < kNodes; ++i)
        deepest.appendChild(document.createElement("w"));
    EXPECT_EQ(kNodes + 1, document.getElementsByTagName("u").getLength());
    EXPECT_EQ(7 + 7 * kNodes + 4 + 7 * kNodes + 4 * kNodes, ZBLIDOM_Helper::serialize(document).size());
}
