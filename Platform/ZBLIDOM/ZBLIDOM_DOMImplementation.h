// The factory of empty documents.
#pragma once

#include "ZBLCore/I18NString.h"
#include "ZBLIDOM/ZBLIDOM_Node.h"

#include "PlatformApi.h"

// Stateless: safe on any thread, and at any time of the process.
class BRINDLE_PLATFORM_API ZBLIDOM_DOMImplementation {
public:
    // Starts and ends only count. Documents can be made before the first start and outlive the last end.
    static void initialize() noexcept;
    static void terminate() noexcept;
    static ZBLIDOM_DOMImplementation& getInstance() noexcept;

    // A document with one element of the qualified name, or with none if the name is empty. The name space and the
    // document type are not used.
    ZBLIDOM_Document createDocument(const I18NString& namespaceUri, const I18NString& qualifiedName,
                                    const ZBLIDOM_DocumentType& type) const;
};
