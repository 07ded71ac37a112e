#include "XmlFailure.h"

#include <filesystem>
#include <string>
#include <string_view>

#include "ZBLIDOM/ZBLIDOM_Exception.h"

#include "Files.h"

namespace brindle_tool {
namespace {

// The offset of a place given by line and column; the text's end if it lies beyond.
std::size_t FindByte(std::string_view text, long line, long column) {
    std::size_t at = 0;
    for (; line > 1 && at < text.size(); --line) {
        at = text.find_first_of("\r\n", at);
        if (at == text.npos) return text.size();
        at += text.substr(at, 2) == "\r\n" ? 2 : 1;
    }
    for (; column > 1 && at < text.size(); --column)
        at += CharacterAt(text, at).size();
    return at;
}

// The line of the file with the caret; nothing if the file can't be read for it.
std::string ExcerptOf(const std::string& file, long line, long column) {
    try {
        const I18NString text = ReadInput(file).text;
        return Excerpt(text, FindPlaceOfByte(text, FindByte(text.bytes(), line, column)));
    } catch (const Failure&) {
        return {};
    }
}

} // namespace

// The message begins with the place, which is shown by itself.
Diagnostic Describe(const ZBLIDOM_Exception& failure) {
    const std::string message(failure.getMessage().bytes()), file(failure.getPath().bytes());
    std::string place, excerpt;
    if (failure.getLine() > 0) {
        place = ":" + std::to_string(failure.getLine()) + ":" + std::to_string(failure.getColumn());
        excerpt = ExcerptOf(file, failure.getLine(), failure.getColumn());
    }
    if (file.empty() || !message.starts_with(file + place + ": ")) return {"brindle", Printable(message)};
    return {Printable(std::filesystem::path(file).lexically_normal().string() + place),
            Printable(message.substr(file.size() + place.size() + 2)), excerpt};
}

} // namespace brindle_tool
