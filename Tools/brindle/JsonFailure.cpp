#include "JsonFailure.h"

#include <string_view>

#include "Diagnostic.h"

namespace brindle_tool {

void ThrowJsonFailure(const Input& input, std::size_t readBytes, const char* message) {
    std::string_view what = message;
    if (const std::size_t name = what.find("] "); name != what.npos) what.remove_prefix(name + 2);
    if (const std::size_t column = what.find(" column "); column != what.npos) what.remove_prefix(column);
    if (const std::size_t colon = what.find(": "); colon != what.npos) what.remove_prefix(colon + 2);

    const Place place = FindPlaceOfByte(input.text, readBytes == 0 ? 0 : readBytes - 1);
    throw Failure({input.name + ":" + ToText(place), Printable(what), Excerpt(input.text, place)});
}

} // namespace brindle_tool
