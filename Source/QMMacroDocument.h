// The document form of a text with macro blocks, as the scanner and the parser report it piece by piece.
#pragma once

#include <cstddef>
#include <string_view>

#include "ZBLIDOM/ZBLIDOM_Node.h"

// Pieces arrive in the order of the text, as byte offsets into it. What lies between two reports inside a block becomes
// a text node, so that all text nodes in order are the text. The text is borrowed until the last report; the document
// is its reader's. One thread at a time.
class QMX_MacroDocument {
public:
    // A new document with the root "str".
    void Start(std::string_view text);
    bool IsStarted() const { return !m_document.isNull(); }
    const ZBLIDOM_Document& GetDocument() const { return m_document; }
    // Forgets the document; it lives on with whoever holds a node of it.
    void Reset();

    void PlainText(std::size_t beginByte, std::size_t endByte);
    // An element "macro" from the opening '#' on, and its end behind the closing '#'. Closing a block that isn't open
    // does nothing.
    void OpenBlock(std::size_t hashByte);
    void CloseBlock(std::size_t endByte);
    // Ends the text node that is growing.
    void Flush(std::size_t endByte);
    // An element with the piece as its text.
    void Piece(const char* tag, std::size_t beginByte, std::size_t endByte);
    // An element "mapLookUp" from the map's name to the end of the key.
    void OpenKey(std::size_t nameByte);
    void CloseKey(std::size_t endByte);

private:
    ZBLIDOM_Element Append(const char* tag, std::size_t positionByte, bool withPosition);
    void AppendText(const ZBLIDOM_Node& parent, std::size_t beginByte, std::size_t endByte);

    std::string_view m_text;
    ZBLIDOM_Document m_document;
    ZBLIDOM_Node m_open; // where pieces go at present
    bool m_blockOpen = false;
    std::size_t m_runByte = 0; // where the growing text node begins
};
