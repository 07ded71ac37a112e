// The exceptions that carry a document fragment.
#include "QFException.h"

#include <utility>

namespace {

template <class... P>
QFException WithMessage(long code, const char* file, unsigned long number, const P&... parameters) {
    ZBLMessage message(file, number);
    ((message << ZBLMessageParm(parameters)), ...);
    return QFException::CreateException(code, message);
}

} // namespace

QFException::QFException() : ZBLException(0L) {}

QFException::QFException(const QFException&) noexcept = default;

QFException::QFException(long code) : ZBLException(code) {}

QFException::QFException(ZBLSeverity severity, long code) : ZBLException(severity, code) {}

QFException::QFException(const char* text) : ZBLException(text) {}

QFException::QFException(ZBLSeverity severity, const char* text) : ZBLException(severity, text) {}

QFException::~QFException() = default;

QFException& QFException::operator=(const QFException&) noexcept = default;

QFException& QFException::operator<<(const ZBLMessageBase& message) {
    ZBLException::operator<<(message);
    return *this;
}

QFException* QFException::clone() const { return new QFException(*this); }

void QFException::hurl(const ZBLFileLocation& where, const char* component, const char* macroName) {
    addBackTrace(where, component, macroName);
    throw *this;
}

const char* QFException::getThrowableName() const { return "QFException"; }

void QFException::SetDOM(ZBLIDOM_Node fragment) { m_dom = std::move(fragment); }

ZBLIDOM_Node QFException::GetDOM() const { return m_dom; }

QFException QFException::CreateException(long code, ZBLMessageComponents& message) {
    QFException exception(code);
    exception << message;
    return exception;
}

QFException QFException::CreateException(long code, const char* file, unsigned long number) {
    return WithMessage(code, file, number);
}

QFException QFException::CreateException(long code, const char* file, unsigned long number, unsigned long p1) {
    return WithMessage(code, file, number, p1);
}

QFException QFException::CreateException(long code, const char* file, unsigned long number, long p1) {
    return WithMessage(code, file, number, p1);
}

QFException QFException::CreateException(long code, const char* file, unsigned long number, const I18NString& p1) {
    return WithMessage(code, file, number, p1);
}

QFException QFException::CreateException(long code, const char* file, unsigned long number, double p1) {
    return WithMessage(code, file, number, p1);
}

QFException QFException::CreateException(long code, const char* file, unsigned long number, const I18NString& p1,
                                         double p2) {
    return WithMessage(code, file, number, p1, p2);
}

QFException QFException::CreateException(long code, const char* file, unsigned long number, const I18NString& p1,
                                         double p2, const I18NString& p3) {
    return WithMessage(code, file, number, p1, p2, p3);
}

QSModelNotFound::QSModelNotFound(const QSModelNotFound&) noexcept = default;

QSModelNotFound::QSModelNotFound(long code) : QFException(code) {}

QSModelNotFound::QSModelNotFound(ZBLSeverity severity, long code) : QFException(severity, code) {}

QSModelNotFound::QSModelNotFound(const char* text) : QFException(text) {}

QSModelNotFound::QSModelNotFound(ZBLSeverity severity, const char* text) : QFException(severity, text) {}

QSModelNotFound::~QSModelNotFound() = default;

QSModelNotFound& QSModelNotFound::operator=(const QSModelNotFound&) noexcept = default;

QSModelNotFound& QSModelNotFound::operator<<(const ZBLMessageBase& message) {
    ZBLException::operator<<(message);
    return *this;
}

QSModelNotFound* QSModelNotFound::clone() const { return new QSModelNotFound(*this); }

void QSModelNotFound::hurl(const ZBLFileLocation& where, const char* component, const char* macroName) {
    addBackTrace(where, component, macroName);
    throw *this;
}

const char* QSModelNotFound::getThrowableName() const { return "QSModelNotFound"; }
