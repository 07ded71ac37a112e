#include "ZBLCFGAPI/ZBLConfigurationException.h"

ZBLConfigurationException::ZBLConfigurationException(long code) noexcept : ZBLException(code) {}

ZBLConfigurationException::ZBLConfigurationException(ZBLSeverity severity, long code) noexcept
    : ZBLException(severity, code) {}

ZBLConfigurationException::ZBLConfigurationException(const char* text) : ZBLException(text) {}

ZBLConfigurationException::ZBLConfigurationException(ZBLSeverity severity, const char* text)
    : ZBLException(severity, text) {}

ZBLConfigurationException::~ZBLConfigurationException() = default;

ZBLConfigurationException& ZBLConfigurationException::operator<<(const ZBLMessageBase& message) {
    ZBLException::operator<<(message);
    return *this;
}

ZBLConfigurationException* ZBLConfigurationException::clone() const { return new ZBLConfigurationException(*this); }

void ZBLConfigurationException::hurl(const ZBLFileLocation& where, const char* component, const char* macroName) {
    addBackTrace(where, component, macroName);
    throw ZBLConfigurationException(*this);
}

const char* ZBLConfigurationException::getThrowableName() const { return "ZBLConfigurationException"; }
