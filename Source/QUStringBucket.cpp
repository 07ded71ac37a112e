// A number enters the hash index where there is a free slot for it; what finds none is left to the ordered index.
#include "QUStringBucket.h"

#include <functional>
#include <string>
#include <string_view>

#include "ZBLCore/ZBLAssertError.h"

#include "QEException.h"

#include "QEMessageNumbers.h"
#include "QEThrow.h"

namespace {

constexpr long kCodeNoSuchString = 2100;

constexpr long kFree = -1;
constexpr std::size_t kFirstSlots = 64;
constexpr std::size_t kMaxProbes = 128;

std::size_t HashOf(const I18NString* text) {
    return text == nullptr ? 0 : std::hash<std::string_view>()(text->bytes());
}

bool IsSame(const I18NString* a, const I18NString* b) { return a == nullptr || b == nullptr ? a == b : *a == *b; }

// An assertion isn't logged: it tells of a fault in the program.
void Assert(bool holds, const char* text, long line) {
    if (!holds) ZBL_THROW(ZBLAssertError(0, text), "Source/QUStringBucket", line, "QE");
}

} // namespace

AQU_I_StringBucket::AQU_I_StringBucket() = default;

AQU_I_StringBucket::~AQU_I_StringBucket() = default;

AUT_RefPtr<AQU_I_StringBucket> AQU_I_StringBucket::Create() {
    return AUT_RefPtr<AQU_I_StringBucket>(new AQU_StringBucket);
}

AQU_StringBucket::AQU_StringBucket() : m_slots(kFirstSlots, {0, kFree}) {}

long AQU_StringBucket::GetIndex(const I18NString* text) {
    long number;
    if (Find(text, HashOf(text), number)) return number;
    number = static_cast<long>(m_numberIndex.size());
    InsertStringIndex(text, number);
    return number;
}

long AQU_StringBucket::GetIndex(const I18NString& text) { return GetIndex(&text); }

const I18NString* AQU_StringBucket::GetString(long number) const {
    if (number >= 0 && static_cast<std::size_t>(number) < m_numberIndex.size())
        return m_numberIndex[static_cast<std::size_t>(number)].text.get();
    QEException failure(ZBLSeverity::error, kCodeNoSuchString);
    QEAddMessages(failure, kQEMsgNoSuchString, 1, std::to_string(number).c_str());
    QELogAndThrow(failure, "Source/QUStringBucket", 82);
}

// What can run out of memory comes first, so that the indexes hold the same strings after a failure, too.
void AQU_StringBucket::InsertStringIndex(const I18NString* text, long number) {
    const bool isNext = static_cast<std::size_t>(number) == m_numberIndex.size();
    Assert(isNext, "ZBL_ASSERT(insertResult2.second);", 109);
    if (2 * (m_numberIndex.size() + 1) > m_slots.size()) GrowHash();
    m_numberIndex.reserve(m_slots.size() / 2);

    const std::size_t hash = HashOf(text);
    m_numberIndex.push_back({text == nullptr ? nullptr : std::make_unique<const I18NString>(*text), hash});
    EnterHash(number, hash);
}

// Whether the string is in the bucket, and its number.
bool AQU_StringBucket::Find(const I18NString* text, std::size_t hash, long& number) {
    for (std::size_t probe = 0; probe < kMaxProbes; ++probe) {
        const Slot& slot = m_slots[(hash + probe) & (m_slots.size() - 1)];
        if (slot.number == kFree) return false;
        if (slot.hash != hash || !IsSame(m_numberIndex[static_cast<std::size_t>(slot.number)].text.get(), text))
            continue;
        number = slot.number;
        return true;
    }
    CompleteStringIndex();
    const auto found = m_stringIndex.find(text);
    if (found == m_stringIndex.end()) return false;
    number = found->second;
    return true;
}

void AQU_StringBucket::CompleteStringIndex() {
    while (m_stringIndex.size() < m_numberIndex.size()) {
        const std::size_t number = m_stringIndex.size();
        const auto insertResult1 = m_stringIndex.emplace(m_numberIndex[number].text.get(), static_cast<long>(number));
        Assert(insertResult1.second, "ZBL_ASSERT(insertResult1.second);", 103);
    }
}

void AQU_StringBucket::EnterHash(long number, std::size_t hash) {
    for (std::size_t probe = 0; probe < kMaxProbes; ++probe) {
        Slot& slot = m_slots[(hash + probe) & (m_slots.size() - 1)];
        if (slot.number != kFree) continue;
        slot = {hash, number};
        return;
    }
}

void AQU_StringBucket::GrowHash() {
    m_slots = std::vector<Slot>(2 * m_slots.size(), {0, kFree});
    for (std::size_t number = 0; number < m_numberIndex.size(); ++number)
        EnterHash(static_cast<long>(number), m_numberIndex[number].hash);
}
