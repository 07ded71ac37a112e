#include <functional>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

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
    const struct {
        const char *moved, *target, *expected;
    } rows[] = {
        {"a", "r", "<r><b/><c><x/><y/></c><a/><new/></r>"},    {"b", "r", "<r><a/><c><x/><y/></c><b/><new/></r>"},
        {"c", "r", "<r><a/><b/><c><x/><y/></c><new/></r>"},    {"a", "c", "<r><b/><c><x/><y/><a/><new/></c></r>"},
        {"x", "r", "<r><a/><b/><c><y/></c><x/><new/></r>"},    {"y", "r", "<r><a/><b/><c><x/></c><y/><new/></r>"},
        {"c", "a", "<r><a><c><x/><y/></c><new/></a><b/></r>"}, {"y", "x", "<r><a/><b/><c><x><y/><new/></x></c></r>"},
        {"c", "b", "<r><a/><b><c><x/><y/></c><new/></b></r>"}, {"x", "c", "<r><a/><b/><c><y/><x/><new/></c></r>"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.moved) + " to " + row.target);
        const ZBLIDOM_Document document = parsed("<r><a/><b/><c><x/><y/></c></r>");
        const ZBLIDOM_Element target = tagged(document, row.target);
        const ZBLIDOM_Node source = tagged(document, row.moved).getParentNode();
        EXPECT_EQ(tagged(document, row.moved), target.appendChild(tagged(document, row.moved)));
        target.appendChild(document.createElement("new"));
        EXPECT_EQ(row.expected, xml(document));
        source.appendChild(document.createElement("last"));
        const ZBLIDOM_NodeList children = source.getChildNodes();
        EXPECT_EQ("last", children.item(children.getLength() - 1).getNodeName());
        EXPECT_EQ(source, children.item(children.getLength() - 1).getParentNode());
    }
}

TEST(DocumentTree, RefusedChangesThrowAndLeaveTheTree) {
    const ZBLIDOM_Document document = parsed("<r><a><b>t</b></a></r>");
    const ZBLIDOM_Element r = document.getDocumentElement(), a = tagged(document, "a"), b = tagged(document, "b");
    const ZBLIDOM_Node text = b.getFirstChild();
    const ZBLIDOM_Document empty = newDocument("");
    const std::string below = "a node cannot be appended to itself or to a node below it";
    const std::string foreign = "a node of another document cannot be appended";
    const std::string onlyElement = "a document takes one element and nothing else";
    const std::string null = "a null node cannot be changed", aDocument = "a document cannot be appended";
    const std::pair<std::function<void()>, std::string> rows[] = {
        {[&] { b.appendChild(r); }, below},
        {[&] { a.appendChild(a); }, below},
        {[&] { b.appendChild(document); }, aDocument},
        {[&] { text.appendChild(document.createElement("e")); }, "a text cannot have children"},
        {[&] { a.appendChild(parsed("<e/>").getDocumentElement()); }, foreign},
        {[&] { a.appendChild(ZBLIDOM_Node()); }, "a null node cannot be appended"},
        {[&] { document.appendChild(b); }, onlyElement},
        {[&] { empty.appendChild(empty.createTextNode("t")); }, onlyElement},
        {[&] { ZBLIDOM_Node().appendChild(a); }, null},
        {[&] { ZBLIDOM_Element().setAttribute("n", "v"); }, null},
    };
    for (const auto& [change, message] : rows) {
        std::string failure;
        try {
            change();
        } catch (const ZBLIDOM_Exception& e) {
            failure = e.getMessage().c_str();
            EXPECT_EQ(-1, e.getCode());
        }
        EXPECT_EQ(message, failure);
        EXPECT_EQ("<r><a><b>t</b></a></r>", xml(document)) << message;
    }
    EXPECT_EQ(r, document.appendChild(r)) << "the document element may be appended again";
}

TEST(DocumentTree, ANullHandleAnswersEmptyAndAWrongTypeGivesNull) {
    const ZBLIDOM_Node null;
    EXPECT_TRUE(!null.getParentNode() && !null.getFirstChild() && !null.getNextSibling() && !null.getOwnerDocument());
    EXPECT_EQ(0, null.getChildNodes().getLength() + null.getNodeType() + null.getNodeName().size());
    EXPECT_EQ("", ZBLIDOM_Element().getAttribute("n") + ZBLIDOM_Helper::getElementText(null) + xml(null).c_str());
    const ZBLIDOM_Document document = parsed("<r>t<![CDATA[c]]></r>");
    const ZBLIDOM_NodeList children = document.getDocumentElement().getChildNodes();
    EXPECT_TRUE(!ZBLIDOM_Element(children.item(0)) && !ZBLIDOM_Text(document) && !ZBLIDOM_Document(children.item(0)));
    EXPECT_EQ("c", ZBLIDOM_Text(children.item(1)).getNodeValue());
    EXPECT_TRUE(!children.item(-1) && !children.item(2) && !newDocument("").getDocumentElement());
}

TEST(DocumentTree, AnyHandleKeepsTheWholeDocument) {
    ZBLIDOM_Node text = parsed("<r><a n='1'>deep</a></r>").getDocumentElement().getFirstChild().getFirstChild();
    const ZBLIDOM_NodeList list = parsed("<r><a n='1'/><a n='2'/></r>").getElementsByTagName("a");
    ZBLIDOM_Node moved = std::move(text);
    EXPECT_TRUE(text.isNull());
    text = moved;
    moved = ZBLIDOM_Node();
    EXPECT_EQ("<r><a n=\"1\">deep</a></r>", xml(text.getOwnerDocument()));
    EXPECT_EQ("12", names(list));
}

TEST(DocumentTree, DescendantsComeInDocumentOrderAndAsTheyWere) {
    const ZBLIDOM_Document document =
        parsed("<e n='1'><x><e n='2'><e n='3'/></e></x><p:e n='4'/>e<E n='5'/><e n='6'/></e>");
    const ZBLIDOM_Element root = document.getDocumentElement();
    const ZBLIDOM_NodeList before = root.getElementsByTagName("e");
    tagged(document, "x").appendChild(document.createElement("e"));
    EXPECT_EQ("236", names(before));
    EXPECT_EQ("1236", names(document.getElementsByTagName("e")));
    EXPECT_EQ("4", names(document.getElementsByTagName("p:e")));
    EXPECT_EQ(3, tagged(document, "x").getElementsByTagName("e").getLength());
    for (const char* none : {"*", "", "n", "#text"})
        EXPECT_EQ(0, root.getElementsByTagName(none).getLength()) << none;
}

// From the 33rd attribute on an element has an index; both ways of finding must agree.
TEST(DocumentAttributes, AreFoundReplacedAndKeptInOrderAtAnyNumber) {
    const ZBLIDOM_Document document = newDocument();
    const ZBLIDOM_Element element = document.getDocumentElement(), other = document.createElement("o");
    std::string expected;
    for (int i = 0; i < 70; ++i) {
        const std::string name = "n" + std::to_string(i);
        element.setAttribute(name.c_str(), "first");
        other.setAttribute(name.c_str(), "other");
        for (const char* value : {"a much longer one", "", "it"})
            element.setAttribute(name.c_str(), value);
        expected += " " + name + "=\"it\"";
        ASSERT_EQ("<r" + expected + "/>", xml(element));
        for (int known = 0; known <= i; ++known)
            ASSERT_EQ("it", element.getAttribute(("n" + std::to_string(known)).c_str())) << known << " of " << i;
        ASSERT_TRUE(element.getAttribute(("n" + std::to_string(i + 1)).c_str()).empty());
        ASSERT_TRUE(element.getAttribute("r").empty()) << "a name that the document knows, but not as an attribute";
    }
    EXPECT_EQ("other", other.getAttribute("n69"));
}

TEST(DocumentText, IsWrittenSoThatItReadsBack) {
    const struct {
        const char *value, *text, *attribute, *cdata;
    } rows[] = {
        {"a&b<c>\"'", "a&amp;b&lt;c&gt;\"'", "a&amp;b&lt;c&gt;&quot;'", "a&b<c>\"'"},
        {"\t\n\r", "\t\n\r", "&#9;&#10;&#13;", "\t\n\r"},
        {"]]>]]]>", "]]&gt;]]]&gt;", "]]&gt;]]]&gt;", "]]]]><![CDATA[>]]]]]><![CDATA[>"},
        {"\x01\x1F\x7F", "\uFFFD\uFFFD\x7F", "\uFFFD\uFFFD\x7F", "\uFFFD\uFFFD\x7F"},
        {"\uFFFE\uFFFFx\uFEFF", "\uFFFD\uFFFDx\uFEFF", "\uFFFD\uFFFDx\uFEFF", "\uFFFD\uFFFDx\uFEFF"},
    };
    for (const auto& row : rows) {
        const ZBLIDOM_Document document = newDocument("");
        const ZBLIDOM_Element element = document.createElement("");
        EXPECT_EQ(row.text, xml(document.createTextNode(row.value)));
        EXPECT_EQ("<![CDATA[" + std::string(row.cdata) + "]]>", xml(document.createCDATASection(row.value)));
        element.setAttribute("n", row.value);
        EXPECT_EQ("< n=\"" + std::string(row.attribute) + "\"/>", xml(element));
        element.appendChild(document.createTextNode(row.value));
        EXPECT_EQ(row.value, ZBLIDOM_Helper::getElementText(element)) << "what is held stays as it was given";
    }
    EXPECT_EQ("\uFFFD", xml(newDocument().createTextNode(I18NString("\0", 1))));
}

TEST(DocumentText, OnlyDirectTextIsJoined) {
    const ZBLIDOM_Node element = parsed("<r> a<i>no</i><![CDATA[<b>]]><!--no--> c </r>").getFirstChild();
    EXPECT_EQ(" a<b> c ", ZBLIDOM_Helper::getElementText(element));
}

// A walk by recursion would overflow the stack here, and a walk per appended node would take hours.
TEST(DocumentSize, DeepAndWideDocumentsAreBuiltSearchedAndWritten) {
    constexpr long kNodes = 500'000;
    const ZBLIDOM_Document document = newDocument();
    ZBLIDOM_Node deepest = document.getDocumentElement();
    for (long i = 0; i < kNodes; ++i)
        deepest = deepest.appendChild(document.createElement("d"));
    ZBLIDOM_Node top = document.createElement("u");
    for (long i = 0; i < kNodes; ++i) {
        const ZBLIDOM_Element above = document.createElement("u");
        above.appendChild(top);
        top = above;
    }
    deepest.appendChild(top);
    for (long i = 0; i < kNodes; ++i)
        deepest.appendChild(document.createElement("w"));
    EXPECT_EQ(kNodes, document.getElementsByTagName("d").getLength());
    EXPECT_EQ(kNodes + 1, document.getElementsByTagName("u").getLength());
    EXPECT_EQ(7 + 7 * kNodes + 4 + 7 * kNodes + 4 * kNodes, ZBLIDOM_Helper::serialize(document).size());
    const ZBLIDOM_Element many = document.createElement("m");
    for (long i = 0; i < kNodes / 4; ++i)
        many.setAttribute(std::to_string(i).c_str(), "v");
    EXPECT_EQ("v", many.getAttribute("99999"));
}

TEST(DocumentThreads, OneDocumentIsReadOnSeveral) {
    const ZBLIDOM_Document document = parsed("<r><a n='1'>x</a><a n='2'>y</a></r>");
    const auto read = [&document] {
        for (int i = 0; i < 500; ++i)
            EXPECT_EQ("12", names(document.getElementsByTagName("a")));
    };
    std::thread other(read);
    read();
    other.join();
}
