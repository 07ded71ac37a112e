#include "ZBLCore/ZBLAssertError.h"

ZBLAssertError::ZBLAssertError(const char* text) : ZBLAssertError(0L, text) {}

ZBLAssertError::ZBLAssertError(long number, const char* text) : ZBLException(ZBLSeverity::error, number) {
    ZBLException::operator<<(ZBLMessageString(text));
}

ZBLAssertError::~ZBLAssertError() = default;

ZBLAssertError& ZBLAssertError::operator<<(const ZBLMessageBase& message) {
    ZBLException::operator<<(message);
    return *this;
}

ZBLAssertError* ZBLAssertError::clone() const { return new ZBLAssertError(*this); }

void ZBLAssertError::hurl(const ZBLFileLocation& where, const char* component, const char* macroName) {
    addBackTrace(where, component, macroName);
    throw ZBLAssertError(*this);
}

const char* ZBLAssertError::getThrowableName() const { return "ZBLAssertError"; }
