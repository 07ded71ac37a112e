// The algebra of units.
#include "AQU_StandardUnits.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "QEException.h"

#include "QEMessageNumbers.h"
#include "QEThrow.h"

namespace {

using Units = std::multiset<I18NString>;

constexpr long kUnitsCode = 401;

// The elements of `units` without as many of each as `others` has.
Units Difference(const Units& units, const Units& others) {
    Units difference;
    std::set_difference(units.begin(), units.end(), others.begin(), others.end(),
                        std::inserter(difference, difference.end()));
    return difference;
}

std::string Product(const Units& units) {
    std::string text;
    for (const I18NString& unit : units) {
        if (&unit != &*units.begin()) text += '*';
        text.append(unit.bytes());
    }
    return units.size() > 1 ? "(" + text + ")" : text;
}

[[noreturn]] void RaiseUnlikeUnits(const AQU_StandardUnits& units, const AQU_StandardUnits& other) {
    QEException failure(ZBLSeverity::error, kUnitsCode);
    QEAddMessages(failure, kQEMsgUnlikeUnits, 2, units.GetAsString(), other.GetAsString());
    QELogAndThrow(failure, "Source/QUStandardUnits", 120);
}

} // namespace

AQU_StandardUnits::AQU_StandardUnits() = default;

AQU_StandardUnits::AQU_StandardUnits(const AQU_StandardUnits& other) = default;

AQU_StandardUnits::~AQU_StandardUnits() = default;

AQU_StandardUnits& AQU_StandardUnits::operator=(const AQU_StandardUnits& other) = default;

void AQU_StandardUnits::AddNominator(const I18NString& unit) { m_nominators.insert(unit); }

void AQU_StandardUnits::AddDenominator(const I18NString& unit) { m_denominators.insert(unit); }

void AQU_StandardUnits::Simplify() {
    Units common;
    std::set_intersection(m_nominators.begin(), m_nominators.end(), m_denominators.begin(), m_denominators.end(),
                          std::inserter(common, common.end()));
    if (common.empty()) return;
    Units nominators = Difference(m_nominators, common);
    m_denominators = Difference(m_denominators, common);
    m_nominators = std::move(nominators);
}

AQU_StandardUnits& AQU_StandardUnits::Multiply(const AQU_StandardUnits& other) {
    if (this == &other) return *this;
    m_nominators.insert(other.m_nominators.begin(), other.m_nominators.end());
    m_denominators.insert(other.m_denominators.begin(), other.m_denominators.end());
    Simplify();
    return *this;
}

AQU_StandardUnits& AQU_StandardUnits::Divide(const AQU_StandardUnits& other) {
    if (this == &other) return *this;
    m_denominators.insert(other.m_nominators.begin(), other.m_nominators.end());
    m_nominators.insert(other.m_denominators.begin(), other.m_denominators.end());
    Simplify();
    return *this;
}

AQU_StandardUnits& AQU_StandardUnits::Add(const AQU_StandardUnits& other) {
    if (this == &other || *this == other) return *this;
    Simplify();
    AQU_StandardUnits simplified(other);
    simplified.Simplify();
    if (*this != simplified) RaiseUnlikeUnits(*this, other);
    return *this;
}

I18NString AQU_StandardUnits::GetAsString() const {
    const std::string denominators = Product(m_denominators);
    std::string text = m_nominators.empty() && !m_denominators.empty() ? "1" : Product(m_nominators);
    if (!denominators.empty()) text += "/" + denominators;
    return I18NString::fromValidUtf8(std::move(text));
}

AQU_StandardUnits operator*(const AQU_StandardUnits& a, const AQU_StandardUnits& b) {
    return AQU_StandardUnits(a).Multiply(b);
}

AQU_StandardUnits operator/(const AQU_StandardUnits& a, const AQU_StandardUnits& b) {
    return AQU_StandardUnits(a).Divide(b);
}

AQU_StandardUnits operator+(const AQU_StandardUnits& a, const AQU_StandardUnits& b) {
    return AQU_StandardUnits(a).Add(b);
}

bool operator==(const AQU_StandardUnits& a, const AQU_StandardUnits& b) {
    return a.m_nominators == b.m_nominators && a.m_denominators == b.m_denominators;
}

bool operator!=(const AQU_StandardUnits& a, const AQU_StandardUnits& b) { return !(a == b); }
