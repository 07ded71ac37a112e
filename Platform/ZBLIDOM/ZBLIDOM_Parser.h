// Reads XML into a document.
//
// What is read: elements, attributes, text and CDATA sections. Comments and processing instructions are dropped, and
// the text on their two sides is one node; white space inside the document element is kept. Line ends become LF and
// attribute values are normalised as XML 1.0 says. Encodings: UTF-8, UTF-16 with a byte-order mark, ISO-8859-1,
// US-ASCII and Windows-1252.
//
// Input may come from anywhere: a document type declaration is refused, so that no entity but the five of XML is ever
// expanded and nothing outside the input is opened; size, depth and number of attributes are bounded.
#pragma once

#include <string_view>

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "PlatformApi.h"

// Stateless: one parser may read several documents, one after the other or at once.
class BRINDLE_PLATFORM_API ZBLIDOM_Parser {
public:
    static constexpr long kMaxInputBytes = 1L << 30;
    static constexpr int kMaxDepth = 512;            // nested elements, the document element included
    static constexpr int kMaxAttributes = 1'000'000; // of one element

    // Whether to validate: 0, never.
    explicit ZBLIDOM_Parser(int validation) noexcept;

    // Replaces the whole content of the document, the document element included. Handles of the former nodes stay good;
    // those nodes hang nowhere then. Input that is empty, blank or a mere byte-order mark leaves no document element.
    // Throws ZBLIDOM_Exception, with the position if the fault has one, when the file can't be read, the input is not
    // well-formed or exceeds a bound, or the handle is null; the document is without content then.
    void parse(const I18NString& path, ZBLIDOM_Document& into);
    void parseText(std::string_view bytes, ZBLIDOM_Document& into);
};
