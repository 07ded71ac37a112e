// Loggers of the instrumentation, each by its name and the type of indication that it takes.
#pragma once

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"
#include "zblipf2/LogIndication.h"

// Levels in use, from the most detailed to the most important: the lowest signed 32-bit value, 10000, 20000, 30000,
// 40000, 50000. Any thread.
class BRINDLE_PLATFORM_API LOGLogger {
public:
    virtual ~LOGLogger();
    virtual bool isEnabled(int level) const = 0;

    // Hands the indication on, whatever its level; keeps nothing of it. What fails behind it is ignored.
    virtual void log(const LogIndication& indication) = 0;
};

class BRINDLE_PLATFORM_API LogTypedLogger : public LOGLogger {
public:
    // One object for each name and type, to the end of the process. Null as long as the name has no threshold: neither
    // from the test hook nor as an integer in the section "Instrumentation" of the user's settings.
    static LogTypedLogger* getInstance(const I18NString& name, const I18NString& indicationType);

    // Whether the level reaches the threshold as it is now.
    bool isEnabled(int level) const override;

    // Performance indications go to the test hook's sink, else to the log as records of the logger's name. Any other
    // type is dropped.
    void log(const LogIndication& indication) override;

private:
    explicit LogTypedLogger(const I18NString& name);
    ~LogTypedLogger() override;

    I18NString m_name;
};
