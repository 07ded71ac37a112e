#include "ZBLCFGAPI/ZBLConfigurationException.h"

#include "ZBLCore/ZBLExceptionMembers.h"

ZBLConfigurationException::ZBLConfigurationException(long code) noexcept : ZBLException(code) {}

ZBLConfigurationException::ZBLConfigurationException(ZBLSeverity severity, long code) noexcept
    : ZBLException(severity, code) {}

ZBLConfigurationException::ZBLConfigurationException(const char* text) : ZBLException(text) {}

ZBLConfigurationException::ZBLConfigurationException(ZBLSeverity severity, const char* text)
    : ZBLException(severity, text) {}

ZBLConfigurationException::~ZBLConfigurationException() = default;

ZBL_DEFINE_EXCEPTION_MEMBERS(ZBLConfigurationException)
