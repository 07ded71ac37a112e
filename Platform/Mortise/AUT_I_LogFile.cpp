#include "Mortise/AUT_I_LogFile.h"

#include <initializer_list>
#include <span>
#include <vector>

#include "Mortise/LogLevel.h"
#include "Mortise/LogSink.h"
#include "ZBLCore/ZBLTextSubstitution.h"

namespace {

using Text = const I18NString&;
using Parameters = std::span<const I18NString* const>;

class LogFile : public AUT_I_LogFile {
public:
    explicit LogFile(Text name) : m_name(name), m_level(brindle_platform::logLevelOf(name.bytes())) {}

    void Log(ELogLevel level, Text text, Text p1, Text p2, Text p3, Text p4, Text p5, Text p6, Text p7, Text p8,
             Text p9, Text p10, Text p11, Text p12, Text p13, Text p14, Text p15, Text p16) override {
        const I18NString* const parameters[] = {&p1, &p2,  &p3,  &p4,  &p5,  &p6,  &p7,  &p8,
                                                &p9, &p10, &p11, &p12, &p13, &p14, &p15, &p16};
        Write(level, text, parameters);
    }
    void Log(ELogLevel level, Text text, Text p1, Text p2, Text p3, Text p4) override {
        const I18NString* const parameters[] = {&p1, &p2, &p3, &p4};
        Write(level, text, parameters);
    }
    void Log(ELogLevel level, Text text, Text p1, Text p2, Text p3) override {
        const I18NString* const parameters[] = {&p1, &p2, &p3};
        Write(level, text, parameters);
    }
    void Log(ELogLevel level, Text text, Text p1, Text p2) override {
        const I18NString* const parameters[] = {&p1, &p2};
        Write(level, text, parameters);
    }
    void Log(ELogLevel level, Text text, Text p1) override {
        const I18NString* const parameters[] = {&p1};
        Write(level, text, parameters);
    }
    void Log(ELogLevel level, Text text) override { Write(level, text, {}); }

    void AuditLog(ELogLevel level, bool entry, Text tag1, Text tag2, Text text) override {
        if (!IsWanted(level)) return;
        try {
            brindle_platform::writeLogRecord({level, true, entry, m_name, tag1, tag2, text});
        } catch (...) {
            // Copying the texts failed.
        }
    }

    ELogLevel GetLogLevel() const override { return static_cast<ELogLevel>(m_level); }

protected:
    void Write(ELogLevel level, Text text, Parameters parameters) const noexcept {
        if (!IsWanted(level)) return;
        try {
            brindle_platform::writeLogRecord(
                {level, false, false, m_name, {}, {}, ZBLSubstituteAndAppend(text, parameters, false)});
        } catch (...) {
            // The text couldn't be put together.
        }
    }

private:
    bool IsWanted(ELogLevel level) const noexcept { return level <= m_level && brindle_platform::logSinkPresent(); }

    I18NString m_name;
    int m_level;
};

// Writes a text at its end.
class ScopeLogFile final : public LogFile {
public:
    ScopeLogFile(Text name, ELogLevel level, std::initializer_list<const I18NString*> parameters)
        : LogFile(name), m_scopeLevel(level) {
        m_parameters.reserve(parameters.size());
        for (const I18NString* parameter : parameters)
            m_parameters.push_back(*parameter);
    }
    ~ScopeLogFile() override { WriteForScope(m_last); }

    void Begin(Text first, Text last) {
        m_last = last;
        WriteForScope(first);
    }

private:
    void WriteForScope(Text text) const noexcept {
        if (text.empty()) return;
        const I18NString* parameters[16];
        std::size_t count = 0;
        for (const I18NString& parameter : m_parameters)
            parameters[count++] = &parameter;
        Write(m_scopeLevel, text, Parameters(parameters, count));
    }

    ELogLevel m_scopeLevel;
    I18NString m_last;
    std::vector<I18NString> m_parameters; // at most 16
};

AUT_RefPtr<AUT_I_LogFile> createForScope(Text name, AUT_I_LogFile::ELogLevel level, Text first, Text last,
                                         std::initializer_list<const I18NString*> parameters) {
    auto* log = new ScopeLogFile(name, level, parameters);
    AUT_RefPtr<AUT_I_LogFile> handle(log);
    // Behind the handle, so that an object that can't be handed out logs no end.
    log->Begin(first, last);
    return handle;
}

} // namespace

AUT_I_LogFile::~AUT_I_LogFile() = default;

AUT_RefPtr<AUT_I_LogFile> AUT_I_LogFile::Create(Text name) { return AUT_RefPtr<AUT_I_LogFile>(new LogFile(name)); }

AUT_RefPtr<AUT_I_LogFile> AUT_I_LogFile::Create(Text name, ELogType) { return Create(name); }

AUT_RefPtr<AUT_I_LogFile> AUT_I_LogFile::Create(Text name, ELogLevel level, Text first, Text last) {
    return createForScope(name, level, first, last, {});
}

AUT_RefPtr<AUT_I_LogFile> AUT_I_LogFile::Create(Text name, ELogLevel level, Text first, Text last, Text p1) {
    return createForScope(name, level, first, last, {&p1});
}

AUT_RefPtr<AUT_I_LogFile> AUT_I_LogFile::Create(Text name, ELogLevel level, Text first, Text last, Text p1, Text p2) {
    return createForScope(name, level, first, last, {&p1, &p2});
}

AUT_RefPtr<AUT_I_LogFile> AUT_I_LogFile::Create(Text name, ELogLevel level, Text first, Text last, Text p1, Text p2,
                                                Text p3) {
    return createForScope(name, level, first, last, {&p1, &p2, &p3});
}

AUT_RefPtr<AUT_I_LogFile> AUT_I_LogFile::Create(Text name, ELogLevel level, Text first, Text last, Text p1, Text p2,
                                                Text p3, Text p4) {
    return createForScope(name, level, first, last, {&p1, &p2, &p3, &p4});
}

AUT_RefPtr<AUT_I_LogFile> AUT_I_LogFile::Create(Text name, ELogLevel level, Text first, Text last, Text p1, Text p2,
                                                Text p3, Text p4, Text p5, Text p6, Text p7, Text p8, Text p9, Text p10,
                                                Text p11, Text p12, Text p13, Text p14, Text p15, Text p16) {
    return createForScope(name, level, first, last,
                          {&p1, &p2, &p3, &p4, &p5, &p6, &p7, &p8, &p9, &p10, &p11, &p12, &p13, &p14, &p15, &p16});
}
