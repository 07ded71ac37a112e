#include "Mortise/LogSink.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#include "OS/CurrentThread.h"
#include "OS/Environment.h"
#include "OS/FileSystem.h"
#include "OS/SystemInfo.h"

namespace brindle_platform {
namespace {

using SinkFunction = std::function<void(const LogRecord&)>;

// The lock guards all of it. It is recursive because a sink may log, or replace itself, while it is being called;
// `isWriting` then tells the record from within to go nowhere.
struct Sink {
    std::recursive_mutex lock;
    bool isWriting = false;
    std::shared_ptr<const SinkFunction> function;
    bool isOpened = false;
    FileDescriptor file;
    int descriptor = -1;
};

enum EPresence : int { EUnknown, EAbsent, EPresent };

constinit std::atomic<EPresence> g_presence{EUnknown};

Sink& sink() {
    static Sink& instance = *new Sink();
    return instance;
}

// Empty if records go nowhere.
std::string logTarget() {
    const std::string* target = environmentValue("BRINDLE_LOG");
    return target == nullptr ? std::string() : *target;
}

EPresence findPresence(const Sink& s) { return s.function || !logTarget().empty() ? EPresent : EAbsent; }

void appendEscaped(std::string& out, unsigned char control) {
    constexpr char digits[] = "0123456789abcdef";
    out += "\\x";
    out += digits[control >> 4];
    out += digits[control & 0xF];
}

void appendField(std::string& out, std::string_view utf8, bool mayHaveLines) {
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        const unsigned char c = static_cast<unsigned char>(utf8[at]);
        if (c == '\n' && mayHaveLines) {
            out += "\n\t";
        } else if (c < 0x20 || c == 0x7F) {
            appendEscaped(out, c);
        } else if (c == 0xC2 && static_cast<unsigned char>(utf8[at + 1]) < 0xA0) {
            // U+0080 to U+009F: the text is well-formed, so the second byte is there and is the code point.
            appendEscaped(out, static_cast<unsigned char>(utf8[++at]));
        } else {
            out += utf8[at];
        }
    }
}

std::string formatRecord(const LogRecord& record) {
    std::string line = utcTimeStamp();
    line += '\t' + std::to_string(currentProcessNumber());
    line += '\t' + std::to_string(currentThreadNumber());
    line += '\t';
    appendField(line, record.name.bytes(), false);
    line += '\t' + std::to_string(record.level) + '\t';
    if (record.audit) {
        line += record.entry ? "ENTER\t" : "EXIT\t";
        appendField(line, record.tag1.bytes(), false);
        line += '\t';
        appendField(line, record.tag2.bytes(), false);
        line += '\t';
    }
    appendField(line, record.text.bytes(), true);
    line += '\n';
    return line;
}

void writeToTarget(Sink& s, const LogRecord& record) {
    if (!s.isOpened) {
        const std::string target = logTarget();
        if (target != "-") s.file = openForAppend(target);
        s.descriptor = target == "-" ? kStandardError : s.file.get();
        // Only now: where memory is wanting for the name, the next record tries again.
        s.isOpened = true;
    }
    if (s.descriptor >= 0) writeAll(s.descriptor, formatRecord(record));
}

// Sets a flag for as long as the object lives.
class FlagScope {
public:
    explicit FlagScope(bool& flag) : m_flag(flag) { m_flag = true; }
    ~FlagScope() { m_flag = false; }
    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    bool& m_flag;
};

} // namespace

bool logSinkPresent() noexcept {
    const EPresence known = g_presence.load(std::memory_order_acquire);
    if (known != EUnknown) return known == EPresent;
    try {
        Sink& s = sink();
        const std::lock_guard guard(s.lock);
        const EPresence found = findPresence(s);
        g_presence.store(found, std::memory_order_release);
        return found == EPresent;
    } catch (...) {
        return false;
    }
}

void writeLogRecord(const LogRecord& record) noexcept {
    try {
        Sink& s = sink();
        const std::lock_guard guard(s.lock);
        if (s.isWriting) return;
        const FlagScope writing(s.isWriting);
        // The sink may replace itself while it runs.
        const std::shared_ptr<const SinkFunction> function = s.function;
        if (function) {
            (*function)(record);
        } else {
            writeToTarget(s, record);
        }
    } catch (...) {
        // A failing sink must not make the caller fail.
    }
}

void setLogSink(SinkFunction function) {
    // Destroyed behind the lock: what the old function has captured may log.
    std::shared_ptr<const SinkFunction> other;
    if (function) other = std::make_shared<const SinkFunction>(std::move(function));
    Sink& s = sink();
    const std::lock_guard guard(s.lock);
    s.function.swap(other);
    g_presence.store(findPresence(s), std::memory_order_release);
}

} // namespace brindle_platform
