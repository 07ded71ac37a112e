// The lines of a message catalogue, whose form ZBLMessageCatalogue.h describes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ZBLCore/I18NString.h"

// Immutable, so that several threads may ask at once.
class ZBLMessageLines {
public:
    ZBLMessageLines() = default;
    // The file's bytes; less than 4 GiB.
    explicit ZBLMessageLines(std::string content);

    // Answers whether there is a text for the number, and stores it.
    bool findText(unsigned long number, I18NString& text) const;

private:
    // The number, and where its text stands in the content.
    struct Entry {
        unsigned long number;
        std::uint32_t beginByte;
        std::uint32_t byteCount;
    };

    std::string m_content;
    std::vector<Entry> m_entries; // by number; the later line first behind that
};
