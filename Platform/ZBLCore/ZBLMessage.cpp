#include "ZBLCore/ZBLMessage.h"

#include <array>
#include <charconv>
#include <stdexcept>

#include "ZBLCore/ZBLAssertError.h"
#include "ZBLCore/ZBLMessageCatalogue.h"
#include "ZBLCore/ZBLTextSubstitution.h"

namespace {

constexpr int kDoubleDigits = 15;

// Enough for every whole number and every double of that many digits. The forms of to_chars know no locale.
using NumberBuffer = std::array<char, 32>;

I18NString numberText(const NumberBuffer& buffer, const char* end) {
    return I18NString(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
}

// The parameters as texts. Texts among them are borrowed, so that a long one isn't copied.
class ParameterTexts {
public:
    explicit ParameterTexts(const std::vector<ZBLMessageParm>& parameters) {
        m_numbers.reserve(parameters.size()); // addresses of its elements are kept
        m_texts.reserve(parameters.size());
        for (const ZBLMessageParm& parameter : parameters) {
            if (parameter.getKind() == ZBLMessageParm::String) {
                m_texts.push_back(&parameter.getString());
            } else {
                m_texts.push_back(&m_numbers.emplace_back(parameter.asText()));
            }
        }
    }

    const std::vector<const I18NString*>& get() const { return m_texts; }

private:
    std::vector<I18NString> m_numbers;
    std::vector<const I18NString*> m_texts;
};

I18NString fallbackWithParameters(const ZBLMessageComponents& message) {
    I18NString text = ZBLMessageCatalogue::fallbackText(message.getFile(), message.getNumber());
    const char* separator = " (";
    for (const ZBLMessageParm& parameter : message.getParameters()) {
        const bool isText = parameter.getKind() == ZBLMessageParm::String;
        text.appendValidUtf8(separator);
        if (isText) text.appendValidUtf8("\"");
        text.append(isText ? parameter.getString() : parameter.asText());
        if (isText) text.appendValidUtf8("\"");
        separator = ", ";
    }
    if (!message.getParameters().empty()) text.appendValidUtf8(")");
    return text;
}

} // namespace

ZBLMessageParm::ZBLMessageParm(const I18NString& text) : m_kind(String), m_text(text) {}
ZBLMessageParm::ZBLMessageParm(const char* utf8) : m_kind(String), m_text(utf8) {}
ZBLMessageParm::ZBLMessageParm(int number) : ZBLMessageParm(static_cast<long>(number)) {}
ZBLMessageParm::ZBLMessageParm(long number) : m_kind(Long) { m_number.asLong = number; }
ZBLMessageParm::ZBLMessageParm(unsigned number) : ZBLMessageParm(static_cast<unsigned long>(number)) {}
ZBLMessageParm::ZBLMessageParm(unsigned long number) : m_kind(UnsignedLong) { m_number.asUnsignedLong = number; }
ZBLMessageParm::ZBLMessageParm(double number) : m_kind(Double) { m_number.asDouble = number; }

I18NString ZBLMessageParm::asText() const {
    NumberBuffer buffer;
    char* const begin = buffer.data();
    char* const end = begin + buffer.size();
    switch (m_kind) {
    case String:
        break;
    case Long:
        return numberText(buffer, std::to_chars(begin, end, m_number.asLong).ptr);
    case UnsignedLong:
        return numberText(buffer, std::to_chars(begin, end, m_number.asUnsignedLong).ptr);
    case Double:
        return numberText(buffer,
                          std::to_chars(begin, end, m_number.asDouble, std::chars_format::general, kDoubleDigits).ptr);
    }
    return m_text;
}

ZBLMessageBase::~ZBLMessageBase() = default;

ZBLMessageString::ZBLMessageString(const I18NString& text) : m_text(text) {}
ZBLMessageString::~ZBLMessageString() = default;
ZBLMessageString* ZBLMessageString::clone() const { return new ZBLMessageString(*this); }
I18NString ZBLMessageString::format(const I18NLocale&) const { return m_text; }

ZBLMessageComponents::ZBLMessageComponents(const I18NString& file, unsigned long number)
    : m_file(file), m_number(number) {}
ZBLMessageComponents::~ZBLMessageComponents() = default;
ZBLMessageComponents* ZBLMessageComponents::clone() const { return new ZBLMessageComponents(*this); }

I18NString ZBLMessageComponents::format(const I18NLocale& locale) const {
    try {
        I18NString text;
        if (!ZBLMessageCatalogue::findText(m_file, m_number, locale, text)) return fallbackWithParameters(*this);
        const ParameterTexts parameters(m_parameters);
        return ZBLSubstituteAndAppend(text, parameters.get(), true);
    } catch (const std::length_error&) {
        // Parameters that are too long together: the number still tells what happened.
        return ZBLMessageCatalogue::fallbackText(m_file.substr(0, 64), m_number);
    }
}

ZBLMessageComponents& ZBLMessageComponents::operator<<(const ZBLMessageParm& parameter) {
    m_parameters.push_back(parameter);
    return *this;
}

ZBLMessage::ZBLMessage(const I18NString& file, unsigned long number) : ZBLMessageComponents(file, number) {}
ZBLMessage::~ZBLMessage() = default;
ZBLMessage* ZBLMessage::clone() const { return new ZBLMessage(*this); }

ZBLMessage& ZBLMessage::operator<<(const ZBLMessageParm& parameter) {
    ZBLMessageComponents::operator<<(parameter);
    return *this;
}

void ZBLMessageSet::add(const ZBLMessageBase& message) {
    m_messages.push_back(std::shared_ptr<const ZBLMessageBase>(message.clone()));
}

const ZBLMessageBase& ZBLMessageSet::operator[](std::size_t index) const {
    if (index >= m_messages.size()) {
        ZBL_THROW(ZBLAssertError("ZBL_ASSERT(index < size());"), "Platform/ZBLCore/ZBLMessage", 131, "QE");
    }
    return *m_messages[index];
}
