// A name is brought into a plain form first; the table below then tells the encodings that are converted here from
// those that go to ICU. ICU converters are only opened for names that stand in its alias list, since for any other name
// it would look for a file; and they get callbacks of their own, because ICU's would use substitutes that differ from
// one encoding to the next.

#include "ZBLCore/I18NEncoding.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <new>
#include <set>

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include "OS/Environment.h"
#include "PlatformHooks.h"
#include "ZBLCore/I18NUtf8.h"
#include "ZBLCore/ZBLException.h"
#include "ZBLCore/ZBLMessage.h"

namespace brindle_platform {

namespace {

enum class EForm { utf8, utf16, utf32, ascii, latin1, windows1252 };

struct Encoding {
    std::string_view plainName;
    EForm form;
    bool bigEndian = false;
};

constexpr Encoding kOwnEncodings[] = {
    {"utf8", EForm::utf8},           {"utf16", EForm::utf16},
    {"utf16le", EForm::utf16},       {"utf16be", EForm::utf16, true},
    {"utf32", EForm::utf32},         {"utf32le", EForm::utf32},
    {"utf32be", EForm::utf32, true}, {"usascii", EForm::ascii},
    {"iso88591", EForm::latin1},     {"windows1252", EForm::windows1252},
};

// The bytes 0x80 to 0x9F of windows-1252. The five that it leaves open stand for the control characters of their value,
// so that they survive a round trip.
constexpr std::array<char16_t, 32> kWindows1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                   0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                   0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                   0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char kSubstitute = '?';

constexpr bool isHighSurrogate(I18NCodePoint unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLowSurrogate(I18NCodePoint unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }
constexpr I18NCodePoint joinSurrogates(I18NCodePoint high, I18NCodePoint low) {
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

// ASCII letters in lower case, without "-" and "_".
std::string plainName(std::string_view name) {
    std::string plain;
    for (const char byte : name)
        if (byte != '-' && byte != '_')
            plain += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    return plain;
}

const Encoding* findOwnEncoding(std::string_view name) {
    const std::string plain = plainName(name);
    const auto* const found = std::find_if(std::begin(kOwnEncodings), std::end(kOwnEncodings),
                                           [&plain](const Encoding& own) { return own.plainName == plain; });
    return found == std::end(kOwnEncodings) ? nullptr : found;
}

[[noreturn]] void throwUnknownEncoding(const char* name) {
    ZBLException failure(ZBLSeverity::error, -1L);
    failure << ZBLMessageString(I18NString(name));
    ZBL_THROW(failure, "Platform/ZBLCore/I18NEncoding", 10, "ZBLCore");
}

// Code units of two or four bytes.

template <std::size_t kBytes>
I18NCodePoint loadUnit(const char* at, bool bigEndian) {
    I18NCodePoint unit = 0;
    for (std::size_t byte = 0; byte < kBytes; ++byte) {
        const std::size_t place = bigEndian ? kBytes - 1 - byte : byte;
        unit |= static_cast<I18NCodePoint>(static_cast<unsigned char>(at[place])) << 8 * byte;
    }
    return unit;
}

template <std::size_t kBytes>
void storeUnit(std::string& out, I18NCodePoint unit, bool bigEndian) {
    char bytes[kBytes];
    for (std::size_t byte = 0; byte < kBytes; ++byte)
        bytes[bigEndian ? kBytes - 1 - byte : byte] = static_cast<char>(unit >> 8 * byte);
    out.append(bytes, kBytes);
}

// One or two units; answers the place behind them.
UChar* writeUtf16(I18NCodePoint codePoint, UChar* out) {
    if (codePoint >= 0x10000) {
        *out++ = static_cast<UChar>(0xD800 + ((codePoint - 0x10000) >> 10));
        codePoint = 0xDC00 + (codePoint & 0x3FF);
    }
    *out++ = static_cast<UChar>(codePoint);
    return out;
}

I18NString decodeUtf16(std::string_view bytes, bool bigEndian) {
    I18NString text;
    text.reserve(std::min(bytes.size() / 2, I18NString::kMaxBytes));
    std::size_t at = 0;
    for (; bytes.size() - at >= 2; at += 2) {
        I18NCodePoint unit = loadUnit<2>(bytes.data() + at, bigEndian);
        if (isHighSurrogate(unit) && bytes.size() - at >= 4) {
            const I18NCodePoint next = loadUnit<2>(bytes.data() + at + 2, bigEndian);
            if (isLowSurrogate(next)) {
                unit = joinSurrogates(unit, next);
                at += 2;
            }
        }
        text.append(unit);
    }
    if (at != bytes.size()) text.append(kReplacementCharacter);
    return text;
}

I18NString decodeUtf32(std::string_view bytes, bool bigEndian) {
    I18NString text;
    text.reserve(std::min(bytes.size() / 4, I18NString::kMaxBytes));
    std::size_t at = 0;
    for (; bytes.size() - at >= 4; at += 4)
        text.append(loadUnit<4>(bytes.data() + at, bigEndian));
    if (at != bytes.size()) text.append(kReplacementCharacter);
    return text;
}

std::string encodeUtf16(const I18NString& text, bool bigEndian) {
    std::string bytes;
    bytes.reserve(2 * static_cast<std::size_t>(text.size()));
    for (const I18NCodePoint codePoint : text) {
        UChar units[2];
        const UChar* const end = writeUtf16(codePoint, units);
        for (const UChar* unit = units; unit != end; ++unit)
            storeUnit<2>(bytes, *unit, bigEndian);
    }
    return bytes;
}

std::string encodeUtf32(const I18NString& text, bool bigEndian) {
    std::string bytes;
    bytes.reserve(4 * static_cast<std::size_t>(text.size()));
    for (const I18NCodePoint codePoint : text)
        storeUnit<4>(bytes, codePoint, bigEndian);
    return bytes;
}

// Encodings of one byte per character.

I18NCodePoint decodeByte(unsigned char byte, EForm form) {
    if (byte < 0x80) return byte;
    if (form == EForm::ascii) return kReplacementCharacter;
    return form == EForm::windows1252 && byte < 0xA0 ? kWindows1252[byte - 0x80u] : byte;
}

char encodeCharacter(I18NCodePoint codePoint, EForm form) {
    if (codePoint < 0x80) return static_cast<char>(codePoint);
    if (form == EForm::ascii) return kSubstitute;
    if (form == EForm::windows1252 && (codePoint < 0xA0 || codePoint > 0xFF)) {
        const auto* const found = std::find(kWindows1252.begin(), kWindows1252.end(), codePoint);
        return found == kWindows1252.end() ? kSubstitute : static_cast<char>(0x80 + (found - kWindows1252.begin()));
    }
    return codePoint <= 0xFF ? static_cast<char>(codePoint) : kSubstitute;
}

I18NString decodeSingleBytes(std::string_view bytes, EForm form) {
    I18NString text;
    text.reserve(std::min(bytes.size(), I18NString::kMaxBytes));
    for (const char byte : bytes)
        text.append(decodeByte(static_cast<unsigned char>(byte), form));
    return text;
}

std::string encodeSingleBytes(const I18NString& text, EForm form) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const I18NCodePoint codePoint : text)
        bytes += encodeCharacter(codePoint, form);
    return bytes;
}

// Every other encoding. Both directions go through a small buffer of UTF-16 units, since ICU counts in 32 bits.

constexpr std::size_t kBufferUnits = 1024;

struct ConverterClose {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterClose>;

bool isFailure(UErrorCode status) {
    if (status == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
    return U_FAILURE(status);
}

void U_CALLCONV replaceIllFormed(const void*, UConverterToUnicodeArgs* arguments, const char*, int32_t,
                                 UConverterCallbackReason reason, UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) return;
    *status = U_ZERO_ERROR;
    constexpr UChar replacement = kReplacementCharacter;
    ucnv_cbToUWriteUChars(arguments, &replacement, 1, 0, status);
}

// An encoding that lacks the substitute too loses the character: writing it would only lead here again.
void U_CALLCONV substituteUnmappable(const void*, UConverterFromUnicodeArgs* arguments, const UChar*, int32_t,
                                     UChar32 codePoint, UConverterCallbackReason reason, UErrorCode* status) {
    if (reason > UCNV_IRREGULAR) return;
    *status = U_ZERO_ERROR;
    if (codePoint == kSubstitute) return;
    const UChar substitute = kSubstitute;
    const UChar* source = &substitute;
    ucnv_cbFromUWriteUChars(arguments, &source, source + 1, 0, status);
}

// Null for a name that isn't in ICU's list.
Converter openConverter(const char* name) {
    UErrorCode status = U_ZERO_ERROR;
    if (ucnv_countAliases(name, &status) == 0 || isFailure(status)) return nullptr;
    Converter converter(ucnv_open(name, &status));
    if (isFailure(status)) return nullptr;
    ucnv_setToUCallBack(converter.get(), replaceIllFormed, nullptr, nullptr, nullptr, &status);
    ucnv_setFromUCallBack(converter.get(), substituteUnmappable, nullptr, nullptr, nullptr, &status);
    return isFailure(status) ? nullptr : std::move(converter);
}

void appendUnits(I18NString& text, const UChar* begin, const UChar* end) {
    for (const UChar* at = begin; at != end; ++at) {
        I18NCodePoint unit = *at;
        if (isHighSurrogate(unit) && at + 1 != end && isLowSurrogate(at[1])) unit = joinSurrogates(unit, *++at);
        text.append(unit);
    }
}

// False on a failure that no substitute mends.
bool decodeByConverter(UConverter* converter, std::string_view bytes, I18NString& text) {
    UChar buffer[kBufferUnits];
    UChar* target = buffer;
    const char* source = bytes.data();
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        ucnv_toUnicode(converter, &target, std::end(buffer), &source, bytes.data() + bytes.size(), nullptr, true,
                       &status);
        // The second half of a pair may come with the next units only.
        const bool cutPair = status == U_BUFFER_OVERFLOW_ERROR && target != buffer && isHighSurrogate(target[-1]);
        const UChar* const end = cutPair ? target - 1 : target;
        appendUnits(text, buffer, end);
        target = buffer;
        if (cutPair) *target++ = *end;
    }
    return !isFailure(status);
}

bool encodeUnits(UConverter* converter, const UChar* begin, const UChar* end, bool last, std::string& bytes) {
    char buffer[kBufferUnits];
    UErrorCode status = U_BUFFER_OVERFLOW_ERROR;
    while (status == U_BUFFER_OVERFLOW_ERROR) {
        status = U_ZERO_ERROR;
        char* target = buffer;
        ucnv_fromUnicode(converter, &target, std::end(buffer), &begin, end, nullptr, last, &status);
        bytes.append(buffer, target);
    }
    return !isFailure(status);
}

bool encodeByConverter(UConverter* converter, const I18NString& text, std::string& bytes) {
    UChar buffer[kBufferUnits];
    UChar* unit = buffer;
    for (const I18NCodePoint codePoint : text) {
        if (std::end(buffer) - unit < 2) {
            if (!encodeUnits(converter, buffer, unit, false, bytes)) return false;
            unit = buffer;
        }
        unit = writeUtf16(codePoint, unit);
    }
    return encodeUnits(converter, buffer, unit, true, bytes);
}

// The name, kept for ever, if it is one for narrow files; else null.
const char* narrowEncoding(const char* name) {
    if (name == nullptr) return nullptr;
    if (const Encoding* own = findOwnEncoding(name)) {
        if (own->form == EForm::utf16 || own->form == EForm::utf32) return nullptr;
    } else {
        const Converter converter = openConverter(name);
        UErrorCode status = U_ZERO_ERROR;
        const char* const canonicalName = converter ? ucnv_getName(converter.get(), &status) : nullptr;
        if (canonicalName == nullptr) return nullptr;
        const std::string canonical = plainName(canonicalName);
        if (canonical.starts_with("utf16") || canonical.starts_with("utf32")) return nullptr;
    }
    static std::mutex mutex;
    static auto& names = *new std::set<std::string>;
    const std::lock_guard lock(mutex);
    return names.emplace(name).first->c_str();
}

// Constant initialisation, so that the hook works in static initialisers.
std::atomic<const char*> hookEncoding = nullptr;

} // namespace

I18NString decodeText(std::string_view bytes, const char* encoding) {
    if (encoding == nullptr) throwUnknownEncoding(encoding);
    if (const Encoding* own = findOwnEncoding(encoding)) {
        switch (own->form) {
        case EForm::utf8:
            return I18NString(bytes);
        case EForm::utf16:
            return decodeUtf16(bytes, own->bigEndian);
        case EForm::utf32:
            return decodeUtf32(bytes, own->bigEndian);
        default:
            return decodeSingleBytes(bytes, own->form);
        }
    }
    I18NString text;
    const Converter converter = openConverter(encoding);
    if (!converter || !decodeByConverter(converter.get(), bytes, text)) throwUnknownEncoding(encoding);
    return text;
}

std::string encodeText(const I18NString& text, const char* encoding) {
    if (encoding == nullptr) throwUnknownEncoding(encoding);
    if (const Encoding* own = findOwnEncoding(encoding)) {
        switch (own->form) {
        case EForm::utf8:
            return std::string(text.bytes());
        case EForm::utf16:
            return encodeUtf16(text, own->bigEndian);
        case EForm::utf32:
            return encodeUtf32(text, own->bigEndian);
        default:
            return encodeSingleBytes(text, own->form);
        }
    }
    std::string bytes;
    const Converter converter = openConverter(encoding);
    if (!converter || !encodeByConverter(converter.get(), text, bytes)) throwUnknownEncoding(encoding);
    return bytes;
}

void setDefaultEncoding(const char* name) { hookEncoding.store(narrowEncoding(name)); }

} // namespace brindle_platform

const char* I18NGetPlatformDefaultEncoding() {
    using namespace brindle_platform;
    if (const char* const hook = hookEncoding.load()) return hook;
    static const char* const fromEnvironment = [] {
        const std::string* const value = environmentValue("BRINDLE_DEFAULT_ENCODING");
        const char* const name = value != nullptr ? narrowEncoding(value->c_str()) : nullptr;
        return name != nullptr ? name : "utf-8";
    }();
    return fromEnvironment;
}
