#include "JsonFailure.h"

#include <string_view>

#include "Diagnostic.h"

namespace brindle_tool {
namespace {

std::string_view WithoutName(std::string_view what) {
    const std::size_t name = what.find("] ");
    return name == what.npos ? what : what.substr(name + 2);
}

} // namespace

void ThrowJsonFailure(const Input& input, std::size_t readBytes, const char* message) {
    std::string_view what = WithoutName(message);
    if (const std::size_t column = what.find(" column "); column != what.npos) what.remove_prefix(column);
    if (const std::size_t colon = what.find(": "); colon != what.npos) what.remove_prefix(colon + 2);

    const Place place = FindPlaceOfByte(input.text, readBytes == 0 ? 0 : readBytes - 1);
    throw Failure({input.name + ":" + ToText(place), Printable(what), Excerpt(input.text, place)});
}

void ThrowJsonFailure(const Input& input, const char* message) {
    throw Failure({input.name, Printable(WithoutName(message))});
}

} // namespace brindle_tool
