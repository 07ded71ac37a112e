// The exceptions that carry a document fragment.
#include "QFException.h"

#include <utility>

#include "ZBLCore/ZBLExceptionMembers.h"

namespace {

template <class... P>
QFException WithMessage(long code, const char* file, unsigned long number, const P&... parameters) {
    ZBLMessage message(file, number);
    ((message << ZBLMessageParm(parameters)), ...);
    return QFException::CreateException(code, message);
}

} // namespace

QFException::QFException() : ZBLException(0L) {}

ZBL_DEFINE_EXCEPTION(QFException, ZBLException)

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

ZBL_DEFINE_EXCEPTION(QSModelNotFound, QFException)
