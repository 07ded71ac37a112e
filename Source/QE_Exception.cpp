// The engine's exception classes and QEAddMessages.
#include "QEException.h"

#include <algorithm>
#include <array>

#include "Mortise/AUT_Text.h"

#include "QERes.h"

QEMessage::QEMessage(unsigned long number) : ZBLMessage(QERes::getString(338), number) {}

QEMessage::~QEMessage() = default;

QEException::QEException(const QEException&) noexcept = default;

QEException::QEException(long code) : ZBLException(code) {}

QEException::QEException(ZBLSeverity severity, long code) : ZBLException(severity, code) {}

QEException::QEException(const char* text) : ZBLException(text) {}

QEException::QEException(ZBLSeverity severity, const char* text) : ZBLException(severity, text) {}

QEException::~QEException() = default;

QEException& QEException::operator=(const QEException&) noexcept = default;

QEException& QEException::operator<<(const ZBLMessageBase& message) {
    ZBLException::operator<<(message);
    return *this;
}

QEException* QEException::clone() const { return new QEException(*this); }

void QEException::hurl(const ZBLFileLocation& where, const char* component, const char* macroName) {
    addBackTrace(where, component, macroName);
    throw *this;
}

const char* QEException::getThrowableName() const { return "QEException"; }

QEExceptionExtended::QEExceptionExtended(const QEExceptionExtended&) noexcept = default;

QEExceptionExtended::QEExceptionExtended(long code) : QEException(code) {}

QEExceptionExtended::QEExceptionExtended(ZBLSeverity severity, long code) : QEException(severity, code) {}

QEExceptionExtended::QEExceptionExtended(const char* text) : QEException(text) {}

QEExceptionExtended::QEExceptionExtended(ZBLSeverity severity, const char* text) : QEException(severity, text) {}

QEExceptionExtended::~QEExceptionExtended() = default;

QEExceptionExtended& QEExceptionExtended::operator=(const QEExceptionExtended&) noexcept = default;

QEExceptionExtended& QEExceptionExtended::operator<<(const ZBLMessageBase& message) {
    ZBLException::operator<<(message);
    return *this;
}

QEExceptionExtended* QEExceptionExtended::clone() const { return new QEExceptionExtended(*this); }

void QEExceptionExtended::hurl(const ZBLFileLocation& where, const char* component, const char* macroName) {
    addBackTrace(where, component, macroName);
    throw *this;
}

const char* QEExceptionExtended::getThrowableName() const { return "QEExceptionExtended"; }

std::int32_t QEExceptionExtended::GetPosition() const { return position; }

void QEExceptionExtended::SetPosition(std::int32_t newPosition) { position = newPosition; }

std::int32_t QEExceptionExtended::GetToPosition() const { return toPosition; }

void QEExceptionExtended::SetToPosition(std::int32_t newToPosition) { toPosition = newToPosition; }

int QEExceptionExtended::GetIsMacro() const { return isMacro; }

void QEExceptionExtended::SetIsMacro(int newIsMacro) { isMacro = newIsMacro; }

void QEAddMessages(ZBLException& exception, long messageNumber, int parameterCount, const I18NString& p1,
                   const I18NString& p2, const I18NString& p3, const I18NString& p4, const I18NString& p5,
                   const I18NString& p6) {
    const std::array<const I18NString*, 6> parameters{&p1, &p2, &p3, &p4, &p5, &p6};
    QEMessage message(static_cast<unsigned long>(messageNumber));
    const int count = std::min(parameterCount, static_cast<int>(parameters.size()));
    for (int i = 0; i < count; ++i)
        message << ZBLMessageParm(*parameters[static_cast<std::size_t>(i)]);
    exception << message;
}

void QEAddMessages(ZBLException& exception, const I18NString& text, int, const I18NString& p1, const I18NString& p2,
                   const I18NString& p3, const I18NString& p4, const I18NString& p5, const I18NString& p6) {
    const I18NString& none = AUT_GetEmptyString();
    I18NString words = text;
    AUT_SimpleSubstituteText(words, p1, p2, p3, p4, p5, p6, none, none, none, none, none, none, none, none, none, none);
    exception << ZBLMessageString(words);
}
