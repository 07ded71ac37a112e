// Messages that an exception carries: a ready text, or a message file, a number and parameters, whose words are looked
// up when the message is shown. For
//
//     ZBLMessage message("qemsgs", 0x35d64ee1);
//     message << 5L;
//
// format() puts 5 in for the "%1" of that number's text in the catalogue. Messages are values; one that no thread
// changes may be read by several. Formatting fails for want of memory only.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "PlatformApi.h"
#include "ZBLCore/I18NLocale.h"
#include "ZBLCore/I18NString.h"

// One parameter. A getter of another kind than the parameter's own answers 0 or the empty string.
class BRINDLE_PLATFORM_API ZBLMessageParm {
public:
    enum Kind { String, Long, UnsignedLong, Double };

    ZBLMessageParm(const I18NString& text);
    ZBLMessageParm(const char* utf8);
    ZBLMessageParm(int number);
    ZBLMessageParm(long number);
    ZBLMessageParm(unsigned number);
    ZBLMessageParm(unsigned long number);
    ZBLMessageParm(double number);

    Kind getKind() const { return m_kind; }
    const I18NString& getString() const { return m_text; }
    long getLong() const { return m_kind == Long ? m_number.asLong : 0; }
    unsigned long getUnsignedLong() const { return m_kind == UnsignedLong ? m_number.asUnsignedLong : 0; }
    double getDouble() const { return m_kind == Double ? m_number.asDouble : 0; }

    // The parameter as a message shows it: a text unchanged, whole numbers in decimal, doubles with up to 15
    // significant digits and a point whatever the machine's language.
    I18NString asText() const;

private:
    union Number {
        long asLong;
        unsigned long asUnsignedLong;
        double asDouble;
    };

    Kind m_kind;
    Number m_number{};
    I18NString m_text;
};

class BRINDLE_PLATFORM_API ZBLMessageBase {
public:
    virtual ~ZBLMessageBase();
    // A new object on the heap; it is the caller's.
    virtual ZBLMessageBase* clone() const = 0;
    // The message's words in the language of the locale, or in English where there are none in it.
    virtual I18NString format(const I18NLocale& locale = "en-us") const = 0;
};

// A message whose words are given; they are the same in every locale.
class BRINDLE_PLATFORM_API ZBLMessageString : public ZBLMessageBase {
public:
    explicit ZBLMessageString(const I18NString& text);
    ~ZBLMessageString() override;
    ZBLMessageString* clone() const override;
    I18NString format(const I18NLocale& locale = "en-us") const override;

private:
    I18NString m_text;
};

// A message by file and number. The text comes from the file's catalogue; a parameter that it has no place for is
// appended as " [p]". Without a text the message shows file, number and parameters: qemsgs 0x35df687a (4, "#$#").
class BRINDLE_PLATFORM_API ZBLMessageComponents : public ZBLMessageBase {
public:
    ZBLMessageComponents(const I18NString& file, unsigned long number);
    ~ZBLMessageComponents() override;
    ZBLMessageComponents* clone() const override;
    I18NString format(const I18NLocale& locale = "en-us") const override;

    // Appends a parameter.
    ZBLMessageComponents& operator<<(const ZBLMessageParm& parameter);

    const I18NString& getFile() const { return m_file; }
    unsigned long getNumber() const { return m_number; }
    const std::vector<ZBLMessageParm>& getParameters() const { return m_parameters; }

private:
    I18NString m_file;
    unsigned long m_number;
    std::vector<ZBLMessageParm> m_parameters;
};

class BRINDLE_PLATFORM_API ZBLMessage : public ZBLMessageComponents {
public:
    ZBLMessage(const I18NString& file, unsigned long number);
    ~ZBLMessage() override;
    ZBLMessage* clone() const override;

    ZBLMessage& operator<<(const ZBLMessageParm& parameter);
};

// Messages in the order in which they were added. The set keeps clones that nothing changes any more, so copies of a
// set share them.
class BRINDLE_PLATFORM_API ZBLMessageSet {
public:
    void add(const ZBLMessageBase& message);
    std::size_t size() const { return m_messages.size(); }
    // Valid as long as a set holds the message. An index that isn't below size() raises ZBLAssertError.
    const ZBLMessageBase& operator[](std::size_t index) const;

private:
    std::vector<std::shared_ptr<const ZBLMessageBase>> m_messages;
};
