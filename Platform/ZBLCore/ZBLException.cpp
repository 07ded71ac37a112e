#include "ZBLCore/ZBLException.h"

#include <atomic>
#include <charconv>
#include <memory>
#include <new>
#include <stdexcept>

// One object serves all copies of an exception until one of them writes to it: the writer then takes a copy of its own.
struct ZBLException::Details {
    std::atomic<long> holders{1};
    ZBLMessageSet messages;
    std::vector<BackTraceEntry> backTrace;

    Details() = default;
    Details(const Details& other) : messages(other.messages), backTrace(other.backTrace) {}
};

namespace {

// Built in place and never destroyed, so that exceptions work in static initialisers and at exit.
template <class T>
const T& sharedEmpty() noexcept {
    alignas(T) static unsigned char storage[sizeof(T)];
    static const T* const empty = ::new (static_cast<void*>(storage)) T();
    return *empty;
}

const char* orEmpty(const char* text) { return text != nullptr ? text : ""; }

} // namespace

ZBLThrowable::~ZBLThrowable() = default;

ZBLException::ZBLException(const ZBLException& other) noexcept
    : ZBLThrowable(other), m_details(other.m_details), m_code(other.m_code), m_severity(other.m_severity) {
    if (m_details != nullptr) m_details->holders.fetch_add(1, std::memory_order_relaxed);
}

ZBLException::ZBLException(long code) noexcept : ZBLException(ZBLSeverity::error, code) {}

ZBLException::ZBLException(ZBLSeverity severity, long code) noexcept : m_code(code), m_severity(severity) {}

ZBLException::ZBLException(const char* text) : ZBLException(ZBLSeverity::error, text) {}

// Delegates, so that the destructor runs if the message can't be added.
ZBLException::ZBLException(ZBLSeverity severity, const char* text) : ZBLException(severity, 0L) {
    ZBLException::operator<<(ZBLMessageString(text));
}

ZBLException::~ZBLException() { release(m_details); }

ZBLException& ZBLException::operator=(const ZBLException& other) noexcept {
    if (other.m_details != nullptr) other.m_details->holders.fetch_add(1, std::memory_order_relaxed);
    release(m_details);
    m_details = other.m_details;
    m_code = other.m_code;
    m_severity = other.m_severity;
    return *this;
}

ZBLException* ZBLException::clone() const { return new ZBLException(*this); }

void ZBLException::hurl(const ZBLFileLocation& where, const char* component, const char* macroName) {
    addBackTrace(where, component, macroName);
    throw ZBLException(*this);
}

I18NString ZBLException::getMessage() const {
    const ZBLMessageSet& messages = getMessageSet();
    I18NString text;
    if (messages.size() == 0) {
        char digits[24];
        char* const end = std::to_chars(digits, digits + sizeof digits, getCode()).ptr;
        text.append(getThrowableName());
        text.append(" ");
        text.append(I18NString(digits, static_cast<std::size_t>(end - digits)));
        return text;
    }
    for (std::size_t index = 0; index < messages.size(); ++index) {
        const I18NString message = messages[index].format();
        // What is too long to stand beside the messages before it is left out with all that follow.
        if (text.bytes().size() + 1 + message.bytes().size() > I18NString::kMaxBytes) break;
        if (index > 0) text.append("\n");
        text.append(message);
    }
    return text;
}

const char* ZBLException::getThrowableName() const { return "ZBLException"; }

long ZBLException::getCode() const { return m_code; }

ZBLSeverity ZBLException::getSeverity() const { return m_severity; }

const ZBLMessageSet& ZBLException::getMessageSet() const {
    return m_details != nullptr ? m_details->messages : sharedEmpty<ZBLMessageSet>();
}

ZBLException& ZBLException::operator<<(const ZBLMessageBase& message) {
    writableDetails().messages.add(message);
    return *this;
}

void ZBLException::addBackTrace(const ZBLFileLocation& where, const char* component, const char* macroName) {
    BackTraceEntry entry{where.getPath(), where.getLine(), orEmpty(component), orEmpty(macroName)};
    writableDetails().backTrace.push_back(std::move(entry));
}

const std::vector<ZBLException::BackTraceEntry>& ZBLException::getBackTrace() const {
    return m_details != nullptr ? m_details->backTrace : sharedEmpty<std::vector<BackTraceEntry>>();
}

ZBLException::Details& ZBLException::writableDetails() {
    if (m_details == nullptr) {
        m_details = new Details;
    } else if (m_details->holders.load(std::memory_order_acquire) > 1) {
        Details* own = new Details(*m_details);
        release(m_details);
        m_details = own;
    }
    return *m_details;
}

void ZBLException::release(Details* details) noexcept {
    if (details != nullptr && details->holders.fetch_sub(1, std::memory_order_acq_rel) == 1) delete details;
}
