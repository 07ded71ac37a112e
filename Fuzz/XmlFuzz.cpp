// Laws of the XML reader and of the serialisation beside it. The input is a document in whatever encoding.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"
#include "ZBLIDOM/ZBLIDOM_Exception.h"
#include "ZBLIDOM/ZBLIDOM_Helper.h"
#include "ZBLIDOM/ZBLIDOM_Parser.h"

#include "FuzzCheck.h"

namespace brindle_fuzz {
namespace {

constexpr int kDeepestNesting = 512;

ZBLIDOM_Document NewDocument() {
    return ZBLIDOM_DOMImplementation::getInstance().createDocument("", "former", ZBLIDOM_DocumentType());
}

// The message of the failure; empty if the bytes were read.
std::string Read(std::string_view bytes, ZBLIDOM_Document& document) {
    try {
        ZBLIDOM_Parser(0).parseText(bytes, document);
        return {};
    } catch (const ZBLIDOM_Exception& failure) {
        Require(document.getFirstChild().isNull(), "a failure leaves no content");
        Require(failure.getCode() == -1 && !failure.getMessage().empty(), "a failure has its code and a text");
        // A line ends with LF, CR LF or CR, in UTF-16 too; every byte could be one.
        Require(failure.getLine() >= 0 && failure.getLine() <= static_cast<long>(bytes.size()) + 1 &&
                    failure.getColumn() >= 0 && failure.getColumn() <= static_cast<long>(bytes.size()) + 1,
                "a failure lies in the input");
        Require((failure.getLine() == 0) == (failure.getColumn() == 0), "a place has a line and a column or neither");
        return std::string(failure.getMessage().bytes());
    }
}

// The node behind this one in document order, and how much deeper it lies.
ZBLIDOM_Node Next(ZBLIDOM_Node node, int& depth) {
    if (const ZBLIDOM_Node child = node.getFirstChild()) return ++depth, child;
    for (; node; node = node.getParentNode(), --depth)
        if (const ZBLIDOM_Node next = node.getNextSibling()) return next;
    return node;
}

void RequireSameTrees(const ZBLIDOM_Document& first, const ZBLIDOM_Document& second) {
    ZBLIDOM_Node a = first, b = second;
    int depth = 0, depthOfSecond = 0;
    bool behindText = false;
    while (a && b) {
        RequireSame(b.getNodeName().bytes(), a.getNodeName().bytes(), "a tree comes back with its nodes");
        RequireSame(b.getNodeValue().bytes(), a.getNodeValue().bytes(), "and with its texts");
        Require(a.getChildNodes().getLength() == b.getChildNodes().getLength(), "and with its children");
        const bool isText = a.getNodeType() == ZBLIDOM_TEXT_NODE;
        Require(!(isText && behindText), "two text nodes never follow each other");
        Require(!isText || !a.getNodeValue().empty(), "no text node is empty");
        behindText = isText && a.getNextSibling();
        a = Next(a, depth), b = Next(b, depthOfSecond);
        Require(depth == depthOfSecond && depth <= kDeepestNesting + 1, "and with its depth, which has a bound");
    }
    Require(a.isNull() && b.isNull(), "nothing is lost or added");
}

void Run(std::string_view bytes) {
    ZBLIDOM_Document document = NewDocument();
    const std::string failure = Read(bytes, document);
    ZBLIDOM_Document again = NewDocument();
    RequireSame(Read(bytes, again), failure, "the same bytes have the same outcome");
    if (!failure.empty()) return;

    const I18NString text = ZBLIDOM_Helper::serialize(document);
    RequireSame(ZBLIDOM_Helper::serialize(again).bytes(), text.bytes(), "the same bytes have the same tree");
    RequireSame(Read(text.bytes(), again), "", "what was written is read");
    RequireSameTrees(document, again);
    // Attributes are no nodes; they stand in the text, with which their order and values come back.
    RequireSame(ZBLIDOM_Helper::serialize(again).bytes(), text.bytes(), "what was read again is written the same");
}

} // namespace
} // namespace brindle_fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    brindle_fuzz::Run({reinterpret_cast<const char*>(data), size});
    return 0;
}
