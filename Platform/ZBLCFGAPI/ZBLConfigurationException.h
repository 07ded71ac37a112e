// The failure of the configuration service. The built-in service never raises it; one that is put in its place may.
#pragma once

#include "PlatformApi.h"
#include "ZBLCore/ZBLException.h"

class BRINDLE_PLATFORM_API ZBLConfigurationException : public ZBLException {
public:
    explicit ZBLConfigurationException(long code) noexcept;
    ZBLConfigurationException(ZBLSeverity severity, long code) noexcept;
    explicit ZBLConfigurationException(const char* text);
    ZBLConfigurationException(ZBLSeverity severity, const char* text);
    ZBLConfigurationException(const ZBLConfigurationException&) noexcept = default;
    ~ZBLConfigurationException() override;
    ZBLConfigurationException& operator=(const ZBLConfigurationException&) noexcept = default;

    ZBLConfigurationException& operator<<(const ZBLMessageBase& message);

    ZBLConfigurationException* clone() const override;
    [[noreturn]] void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) override;
    const char* getThrowableName() const override;
};
