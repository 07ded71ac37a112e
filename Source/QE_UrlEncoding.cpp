// Both directions go once over the bytes of the text's UTF-8 form.
#include "AQE_UrlEncoding.h"

#include <string>
#include <string_view>

namespace {

bool StaysAsItIs(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || (byte >= '0' && byte <= '9') ||
           byte == '-' || byte == '.' || byte == '_';
}

// The value of a hexadecimal digit, -1 for another byte.
int HexValue(char byte) {
    if (byte >= '0' && byte <= '9') return byte - '0';
    if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
    if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
    return -1;
}

} // namespace

I18NString AQE_UrlEncode(const I18NString& text) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string encoded;
    encoded.reserve(text.bytes().size());
    for (const char byte : text.bytes()) {
        if (byte == ' ') {
            encoded += '+';
        } else if (StaysAsItIs(byte)) {
            encoded += byte;
        } else {
            const auto value = static_cast<unsigned char>(byte);
            encoded += '%';
            encoded += kDigits[value >> 4];
            encoded += kDigits[value & 15];
        }
    }
    return I18NString(std::string_view(encoded));
}

I18NString AQE_UrlDecode(const I18NString& text) {
    const std::string_view bytes = text.bytes();
    std::string decoded;
    decoded.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const char byte = bytes[at];
        if (byte == '%' && at + 2 < bytes.size()) {
            const int high = HexValue(bytes[at + 1]);
            const int low = HexValue(bytes[at + 2]);
            if (high >= 0 && low >= 0) {
                decoded += static_cast<char>(high << 4 | low);
                at += 2;
                continue;
            }
        }
        decoded += byte == '+' ? ' ' : byte;
    }
    return I18NString(std::string_view(decoded));
}
