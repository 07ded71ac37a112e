// The failure of an assertion: an operation was misused, or an invariant is broken. It isn't written to the log, and
// the library never catches it.
#pragma once

#include "PlatformApi.h"
#include "ZBLCore/ZBLException.h"

// The text is the assertion as it stands in the code, "ZBL_ASSERT(...);". The number is the exception's code.
class BRINDLE_PLATFORM_API ZBLAssertError : public ZBLException {
public:
    explicit ZBLAssertError(const char* text);
    ZBLAssertError(long number, const char* text);
    ZBLAssertError(const ZBLAssertError&) noexcept = default;
    ~ZBLAssertError() override;
    ZBLAssertError& operator=(const ZBLAssertError&) noexcept = default;

    ZBLAssertError& operator<<(const ZBLMessageBase& message);

    ZBLAssertError* clone() const override;
    [[noreturn]] void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) override;
    const char* getThrowableName() const override;
};
