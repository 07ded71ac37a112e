#include "zblipf2/LogTypedLogger.h"

#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "Mortise/AUT_I_LogFile.h"
#include "Mortise/LogSink.h"
#include "Mortise/SettingsStore.h"
#include "OS/Published.h"
#include "PlatformHooks.h"
#include "zblipf2/LogPerfIndication.h"

namespace {

using brindle_platform::Published;
using Sink = std::function<void(const LogPerfIndication&)>;
using Thresholds = std::map<std::string, int, std::less<>>;

struct Loggers {
    std::mutex lock;
    std::map<std::pair<I18NString, I18NString>, LogTypedLogger*> byNameAndType;
};

constinit Published<Thresholds> g_thresholds;
constinit std::mutex g_thresholdChange;
constinit Published<Sink> g_sink;

Loggers& loggers() {
    static Loggers& instance = *new Loggers();
    return instance;
}

std::optional<int> thresholdOf(std::string_view name) {
    if (const Thresholds* thresholds = g_thresholds.get()) {
        if (const auto found = thresholds->find(name); found != thresholds->end()) return found->second;
    }
    return brindle_platform::findNumber<int>("Instrumentation", name);
}

void appendText(std::string& out, std::string_view key, const I18NString& value) {
    out.append(" ").append(key).append("=\"").append(value.bytes()).append("\"");
}

std::string formatIndication(const LogPerfIndication& indication) {
    std::string text(indication.getStatus().bytes());
    appendText(text, "component", indication.getComponent());
    text += " level=" + std::to_string(indication.getLevel());
    text += " thread=" + std::to_string(indication.getThreadID());
    text += " elapsedMs=" + std::to_string(indication.getElapsedMillis());
    appendText(text, "class", indication.getClassId());
    appendText(text, "method", indication.getMethodId());
    appendText(text, "session", indication.getSessionID());
    appendText(text, "request", indication.getRequestID());
    appendText(text, "data", indication.getLogData());
    return text;
}

} // namespace

LOGLogger::~LOGLogger() = default;

LogTypedLogger::LogTypedLogger(const I18NString& name) : m_name(name) {}

LogTypedLogger::~LogTypedLogger() = default;

LogTypedLogger* LogTypedLogger::getInstance(const I18NString& name, const I18NString& indicationType) {
    if (!thresholdOf(name.bytes())) return nullptr;
    Loggers& all = loggers();
    const std::lock_guard guard(all.lock);
    LogTypedLogger*& logger = all.byNameAndType[{name, indicationType}];
    if (logger == nullptr) logger = new LogTypedLogger(name);
    return logger;
}

bool LogTypedLogger::isEnabled(int level) const {
    const std::optional<int> threshold = thresholdOf(m_name.bytes());
    return threshold && level >= *threshold;
}

void LogTypedLogger::log(const LogIndication& indication) {
    const auto* const performance = dynamic_cast<const LogPerfIndication*>(&indication);
    if (performance == nullptr) return;
    if (const Sink* sink = g_sink.get()) {
        try {
            (*sink)(*performance);
        } catch (...) {
            // A failing sink must not make the caller fail.
        }
    } else if (brindle_platform::logSinkPresent()) {
        const std::string text = formatIndication(*performance);
        brindle_platform::writeLogRecord(
            {AUT_I_LogFile::ELL_Diagnostic, false, false, m_name, {}, {}, I18NString(std::string_view(text))});
    }
}

namespace brindle_platform {

void setIndicationSink(Sink sink) { g_sink.setOrClear(std::move(sink)); }

void setLoggerThreshold(const I18NString& name, int threshold) {
    const std::lock_guard guard(g_thresholdChange);
    const Thresholds* const current = g_thresholds.get();
    Thresholds next = current == nullptr ? Thresholds() : *current;
    next.insert_or_assign(std::string(name.bytes()), threshold);
    g_thresholds.set(std::move(next));
}

void clearLoggerThresholds() {
    const std::lock_guard guard(g_thresholdChange);
    g_thresholds.clear();
}

} // namespace brindle_platform
