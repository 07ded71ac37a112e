// The library's own exception classes and the functions that fill them. Every failure leaves the library as one of
// these or as another class derived from ZBLException; the words of a message are looked up by its message file and
// number when it is shown. Exceptions are values: a copy holds all that the original held. One thread at a time.
#pragma once

#include <cstdint>

#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLException.h"
#include "ZBLCore/ZBLMessage.h"

#include "BrindleApi.h"

// A message of the message file "qemsgs". Parameters are appended with operator<<.
class BRINDLE_API QEMessage : public ZBLMessage {
public:
    explicit QEMessage(unsigned long number);
    QEMessage(const QEMessage&) = default;
    QEMessage& operator=(const QEMessage&) = default;
    ~QEMessage() override;
};

// A failure of the library. The constructors without a severity mean ZBLSeverity::error; those with a text have code 0
// and the text as their one message. A literal code needs the suffix L, since a plain 0 could also be a text.
class BRINDLE_API QEException : public ZBLException {
public:
    QEException(const QEException&) noexcept;
    explicit QEException(long code);
    QEException(ZBLSeverity severity, long code);
    explicit QEException(const char* text);
    QEException(ZBLSeverity severity, const char* text);
    ~QEException() override;
    QEException& operator=(const QEException&) noexcept;

    // Adds a copy of the message behind those that the exception has.
    QEException& operator<<(const ZBLMessageBase& message);

    // A new object of the same class on the heap; it is the caller's.
    QEException* clone() const override;
    // Notes the place in this object's back-trace and throws a copy of the object. The object stays the caller's.
    [[noreturn]] void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) override;
    const char* getThrowableName() const override;
};

// A failure with a place in the text that was given: character offsets, -1 where they aren't known. For failures of the
// macro scanner and parser the position counts from 1 and lies directly behind the failing token.
class BRINDLE_API QEExceptionExtended : public QEException {
public:
    QEExceptionExtended(const QEExceptionExtended&) noexcept;
    explicit QEExceptionExtended(long code);
    QEExceptionExtended(ZBLSeverity severity, long code);
    explicit QEExceptionExtended(const char* text);
    QEExceptionExtended(ZBLSeverity severity, const char* text);
    ~QEExceptionExtended() override;
    QEExceptionExtended& operator=(const QEExceptionExtended&) noexcept;

    QEExceptionExtended& operator<<(const ZBLMessageBase& message);

    QEExceptionExtended* clone() const override;
    [[noreturn]] void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) override;
    const char* getThrowableName() const override;

    std::int32_t GetPosition() const;
    void SetPosition(std::int32_t newPosition);
    std::int32_t GetToPosition() const;
    void SetToPosition(std::int32_t newToPosition);
    // 1 if the offsets lie inside a macro block, else 0.
    int GetIsMacro() const;
    void SetIsMacro(int newIsMacro);

private:
    std::int32_t position = -1;
    std::int32_t toPosition = -1;
    int isMacro = 0;
};

// Adds the message of "qemsgs" with this number. Its parameters are the first parameterCount of the six strings, in
// order: none for a count of 0 or less, all six for more than six. A number without a text is no failure.
BRINDLE_API void QEAddMessages(ZBLException& exception, long messageNumber, int parameterCount,
                               const I18NString& p1 = I18NString(), const I18NString& p2 = I18NString(),
                               const I18NString& p3 = I18NString(), const I18NString& p4 = I18NString(),
                               const I18NString& p5 = I18NString(), const I18NString& p6 = I18NString());

// Adds a message whose words are the text itself, with the six strings put in for "%1" to "%6" and nothing for "%7" to
// "%16". The count is not read.
BRINDLE_API void QEAddMessages(ZBLException& exception, const I18NString& text, int ignored,
                               const I18NString& p1 = I18NString(), const I18NString& p2 = I18NString(),
                               const I18NString& p3 = I18NString(), const I18NString& p4 = I18NString(),
                               const I18NString& p5 = I18NString(), const I18NString& p6 = I18NString());
