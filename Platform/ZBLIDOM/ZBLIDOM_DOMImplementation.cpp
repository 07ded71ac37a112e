#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"

#include <atomic>
#include <memory>

#include "ZBLIDOM/ZBLIDOM_Tree.h"

namespace {

std::atomic<long> starts{0};
ZBLIDOM_DOMImplementation implementation;

} // namespace

void ZBLIDOM_DOMImplementation::initialize() noexcept { ++starts; }

void ZBLIDOM_DOMImplementation::terminate() noexcept { --starts; }

ZBLIDOM_DOMImplementation& ZBLIDOM_DOMImplementation::getInstance() noexcept { return implementation; }

ZBLIDOM_Document ZBLIDOM_DOMImplementation::createDocument(const I18NString&, const I18NString& qualifiedName,
                                                           const ZBLIDOM_DocumentType&) const {
    auto* tree = new zblidom::Tree;
    const ZBLIDOM_Document document(zblidom::Access::handle(tree, &tree->document()));
    if (!qualifiedName.empty()) document.appendChild(document.createElement(qualifiedName));
    return document;
}
