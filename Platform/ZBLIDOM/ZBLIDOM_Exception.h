// The failures of the document model: input that can't be read, and misuse of handles.
#pragma once

#include <memory>

#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLException.h"

#include "PlatformApi.h"

// Severity error, code -1. The message is one readable sentence that begins with "path:line:column: " as far as these
// are known. Copying does not throw.
class BRINDLE_PLATFORM_API ZBLIDOM_Exception : public ZBLException {
public:
    // Line and column count from 1, the column in characters; 0 if the failure has no position. The path is empty if
    // the input was no file.
    explicit ZBLIDOM_Exception(const I18NString& text, const I18NString& path = I18NString(), long line = 0,
                               long column = 0);
    ZBLIDOM_Exception(const ZBLIDOM_Exception&) noexcept;
    ~ZBLIDOM_Exception() override;
    ZBLIDOM_Exception& operator=(const ZBLIDOM_Exception&) noexcept;

    ZBLIDOM_Exception& operator<<(const ZBLMessageBase& message);

    ZBLIDOM_Exception* clone() const override;
    [[noreturn]] void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) override;
    const char* getThrowableName() const override;

    long getLine() const noexcept { return m_line; }
    long getColumn() const noexcept { return m_column; }
    const I18NString& getPath() const noexcept { return *m_path; }

private:
    std::shared_ptr<const I18NString> m_path;
    long m_line;
    long m_column;
};
