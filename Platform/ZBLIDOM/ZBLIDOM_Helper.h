// What is asked of documents in many places: the text of an element, and a document as XML.
#pragma once

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "PlatformApi.h"

struct BRINDLE_PLATFORM_API ZBLIDOM_Helper {
    // The texts and CDATA sections among the node's direct children, joined in order, nothing trimmed.
    static I18NString getElementText(const ZBLIDOM_Node& element);

    // The node with everything below it as XML, without declaration and added white space; an element without children
    // is one tag. Attributes keep their order. A character that XML 1.0 forbids is written as U+FFFD; names are not
    // otherwise checked. Empty for null. Throws std::length_error beyond 2^31 - 1 bytes.
    static I18NString serialize(const ZBLIDOM_Node& node);
};
