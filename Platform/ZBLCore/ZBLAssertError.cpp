#include "ZBLCore/ZBLAssertError.h"

#include "ZBLCore/ZBLExceptionMembers.h"

ZBLAssertError::ZBLAssertError(const char* text) : ZBLAssertError(0L, text) {}

ZBLAssertError::ZBLAssertError(long number, const char* text) : ZBLException(ZBLSeverity::error, number) {
    ZBLException::operator<<(ZBLMessageString(text));
}

ZBLAssertError::~ZBLAssertError() = default;

ZBL_DEFINE_EXCEPTION_MEMBERS(ZBLAssertError)
