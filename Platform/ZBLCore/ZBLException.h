// The exceptions of the platform, which every exception above it derives from, and the macro that throws them:
//
//     ZBLException failure(ZBLSeverity::error, 901);
//     failure << message;
//     ZBL_THROW(failure, "Source/QMMacroExpander", 2610, "QE");
//
// What is thrown is a copy, and copying never fails: copies share their messages and back-trace until one of them adds
// to them. An object belongs to one thread at a time; copies of one exception may be on several. None of the classes is
// derived from std::exception: a handler of that one doesn't see them.
#pragma once

#include <string>
#include <vector>

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"
#include "ZBLCore/ZBLFileLocation.h"
#include "ZBLCore/ZBLMessage.h"
#include "ZBLCore/ZBLSeverity.h"

class BRINDLE_PLATFORM_API ZBLThrowable {
public:
    virtual ~ZBLThrowable();
    // A new object of the same class on the heap; it is the caller's.
    virtual ZBLThrowable* clone() const = 0;
    // Notes the place in this object's back-trace and throws a copy of the object's own class. The object stays the
    // caller's. Null texts are empty ones. Every class overrides this, so that nothing is cut off the copy.
    [[noreturn]] virtual void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) = 0;
    // What a person reads.
    virtual I18NString getMessage() const = 0;
    // Name of the class.
    virtual const char* getThrowableName() const = 0;
};

// The constructors without a severity mean ZBLSeverity::error; those with a text have code 0 and the text as their one
// message. A literal code needs the suffix L, since a plain 0 could also be a text.
class BRINDLE_PLATFORM_API ZBLException : public ZBLThrowable {
public:
    // A place that the exception was thrown from.
    struct BackTraceEntry {
        std::string path;
        long line;
        std::string component;
        std::string macroName;
    };

    ZBLException(const ZBLException&) noexcept;
    explicit ZBLException(long code) noexcept;
    ZBLException(ZBLSeverity severity, long code) noexcept;
    explicit ZBLException(const char* text);
    ZBLException(ZBLSeverity severity, const char* text);
    ~ZBLException() override;
    ZBLException& operator=(const ZBLException&) noexcept;

    ZBLException* clone() const override;
    [[noreturn]] void hurl(const ZBLFileLocation& where, const char* component, const char* macroName) override;
    // The messages in English, one below the other; without messages the class name, a blank and the code.
    I18NString getMessage() const override;
    const char* getThrowableName() const override;

    virtual long getCode() const;
    virtual ZBLSeverity getSeverity() const;
    // Valid until this object changes.
    virtual const ZBLMessageSet& getMessageSet() const;

    // Adds a copy of the message behind those that the exception has. If that fails, the exception is as before.
    ZBLException& operator<<(const ZBLMessageBase& message);
    void addBackTrace(const ZBLFileLocation& where, const char* component, const char* macroName);
    // The places in the order in which they were added. Valid until this object changes.
    const std::vector<BackTraceEntry>& getBackTrace() const;

private:
    // Messages and back-trace; null as long as there are none.
    struct Details;

    Details& writableDetails();
    static void release(Details* details) noexcept;

    Details* m_details = nullptr;
    long m_code;
    ZBLSeverity m_severity;
};

// Throws a copy of the exception from the place that path and line name. Both are literals at the site.
#define ZBL_THROW(exception, path, line, component)                                                                    \
    (exception).hurl(ZBLFileLocation((path), (line)), (component), "ZBL_THROW")
