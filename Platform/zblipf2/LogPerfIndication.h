// An indication of a performance logger: which call of which component it is about, and what the counters show.
#pragma once

#include <cstdint>

#include "PlatformApi.h"
#include "ZBLCore/I18NString.h"
#include "zblipf2/LogIndication.h"

class ZBLResourceCounterSet;

// One thread at a time.
class BRINDLE_PLATFORM_API LogPerfIndication : public LogIndication {
public:
    // The counters are the caller's and must outlive the indication, but not its copies. The only options are 0.
    LogPerfIndication(const I18NString& component, int options, ZBLResourceCounterSet& counters);
    LogPerfIndication(const LogPerfIndication&) = default;
    LogPerfIndication& operator=(const LogPerfIndication&) = delete;
    ~LogPerfIndication() override;

    void setThreadID(unsigned long thread) { m_threadID = thread; }
    void setLevel(int level) { m_level = level; }
    void setSessionID(const I18NString& text) { m_sessionID = text; }
    void setRequestID(const I18NString& text) { m_requestID = text; }
    void setClassId(const I18NString& text) { m_classId = text; }
    void setMethodId(const I18NString& text) { m_methodId = text; }
    void setStatus(const I18NString& text) { m_status = text; }
    void setLogData(const I18NString& text) { m_logData = text; }

    const I18NString& getComponent() const { return m_component; }
    unsigned long getThreadID() const { return m_threadID; }
    int getLevel() const { return m_level; }
    const I18NString& getSessionID() const { return m_sessionID; }
    const I18NString& getRequestID() const { return m_requestID; }
    const I18NString& getClassId() const { return m_classId; }
    const I18NString& getMethodId() const { return m_methodId; }
    const I18NString& getStatus() const { return m_status; }
    const I18NString& getLogData() const { return m_logData; }

    // As the counters stand now; of a copy, as they stood when it was made.
    std::int64_t getElapsedMillis() const { return m_elapsed.Millis(); }

private:
    // Whoever is handed an indication may keep a copy, but the counters end with the scope that is measured.
    class BRINDLE_PLATFORM_API Elapsed {
    public:
        explicit Elapsed(const ZBLResourceCounterSet& counters) : m_counters(&counters) {}
        Elapsed(const Elapsed& other) : m_millisAtCopy(other.Millis()) {}
        Elapsed& operator=(const Elapsed&) = delete;

        std::int64_t Millis() const;

    private:
        const ZBLResourceCounterSet* m_counters = nullptr; // null in a copy
        std::int64_t m_millisAtCopy = 0;
    };

    I18NString m_component;
    Elapsed m_elapsed;
    unsigned long m_threadID = 0;
    int m_level = 0;
    I18NString m_sessionID;
    I18NString m_requestID;
    I18NString m_classId;
    I18NString m_methodId;
    I18NString m_status;
    I18NString m_logData;
};
