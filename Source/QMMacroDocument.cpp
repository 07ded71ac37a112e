// What has been read but not reported yet begins at m_runByte; the next report makes a text node of it.
#include "QMMacroDocument.h"

#include <cstdint>

#include "Mortise/AUT_Text.h"
#include "ZBLIDOM/ZBLIDOM_DOMImplementation.h"

void QMX_MacroDocument::Start(std::string_view text) {
    m_text = text;
    m_document = ZBLIDOM_DOMImplementation::getInstance().createDocument(I18NString(), "str", ZBLIDOM_DocumentType());
    m_open = m_document.getDocumentElement();
    m_blockOpen = false;
    m_runByte = 0;
}

void QMX_MacroDocument::Reset() {
    m_text = {};
    m_document = ZBLIDOM_Document();
    m_open = ZBLIDOM_Node();
    m_blockOpen = false;
    m_runByte = 0;
}

void QMX_MacroDocument::AppendText(const ZBLIDOM_Node& parent, std::size_t beginByte, std::size_t endByte) {
    if (beginByte >= endByte) return;
    const std::string_view piece = m_text.substr(beginByte, endByte - beginByte);
    parent.appendChild(m_document.createTextNode(I18NString(piece)));
}

ZBLIDOM_Element QMX_MacroDocument::Append(const char* tag, std::size_t positionByte, bool withPosition) {
    const ZBLIDOM_Element element = m_document.createElement(tag);
    if (withPosition) element.setAttribute("position", AUT_ToString(static_cast<std::int64_t>(positionByte)));
    m_open.appendChild(element);
    return element;
}

void QMX_MacroDocument::PlainText(std::size_t beginByte, std::size_t endByte) {
    AppendText(m_open, beginByte, endByte);
}

void QMX_MacroDocument::OpenBlock(std::size_t hashByte) {
    m_open = Append("macro", hashByte, true);
    m_blockOpen = true;
    m_runByte = hashByte;
}

void QMX_MacroDocument::CloseBlock(std::size_t endByte) {
    if (!m_blockOpen) return;
    Flush(endByte);
    m_open = m_document.getDocumentElement();
    m_blockOpen = false;
}

void QMX_MacroDocument::Flush(std::size_t endByte) {
    AppendText(m_open, m_runByte, endByte);
    m_runByte = endByte;
}

void QMX_MacroDocument::Piece(const char* tag, std::size_t beginByte, std::size_t endByte) {
    Flush(beginByte);
    AppendText(Append(tag, beginByte, true), beginByte, endByte);
    m_runByte = endByte;
}

void QMX_MacroDocument::OpenKey(std::size_t nameByte) {
    Flush(nameByte);
    m_open = Append("mapLookUp", nameByte, false);
}

void QMX_MacroDocument::CloseKey(std::size_t endByte) {
    Flush(endByte);
    m_open = m_open.getParentNode();
}
