// The unit of a value as a fraction of named units, such as "kg*m/s". A name is an opaque text: nothing here converts
// one unit into another. An object belongs to one thread at a time.
#pragma once

#include <set>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

class BRINDLE_API AQU_StandardUnits {
public:
    // Without elements: the dimensionless unit.
    AQU_StandardUnits();
    AQU_StandardUnits(const AQU_StandardUnits& other);
    ~AQU_StandardUnits();
    AQU_StandardUnits& operator=(const AQU_StandardUnits& other);

    // Add one element, and leave it there even if the other side has it, too.
    void AddNominator(const I18NString& unit);
    void AddDenominator(const I18NString& unit);

    // Takes away what stands on both sides, one for one.
    void Simplify();

    // Change this object and answer it. Multiply and Divide leave a simplified fraction; both do nothing when they are
    // given this very object, so u.Multiply(u) isn't the square and u.Divide(u) isn't dimensionless.
    AQU_StandardUnits& Multiply(const AQU_StandardUnits& other);
    AQU_StandardUnits& Divide(const AQU_StandardUnits& other);
    // Changes nothing if both units are the same as they stand; else simplifies this one. If the other one, simplified,
    // is another unit: QEException, code 401, message 0x35dfedff with both units as texts.
    AQU_StandardUnits& Add(const AQU_StandardUnits& other);

    // Such as "kg", "m/s", "1/s", "(kg*m)/(s*s)", each side in the order of the names; empty for the dimensionless
    // unit.
    I18NString GetAsString() const;

    // As the fractions stand: m/m isn't the dimensionless unit.
    friend BRINDLE_API bool operator==(const AQU_StandardUnits& a, const AQU_StandardUnits& b);

private:
    std::multiset<I18NString> m_nominators;
    std::multiset<I18NString> m_denominators;
};

// Multiply, Divide and Add on a copy of the left operand: u * u is the square, u / u is dimensionless.
BRINDLE_API AQU_StandardUnits operator*(const AQU_StandardUnits& a, const AQU_StandardUnits& b);
BRINDLE_API AQU_StandardUnits operator/(const AQU_StandardUnits& a, const AQU_StandardUnits& b);
BRINDLE_API AQU_StandardUnits operator+(const AQU_StandardUnits& a, const AQU_StandardUnits& b);

BRINDLE_API bool operator==(const AQU_StandardUnits& a, const AQU_StandardUnits& b);
BRINDLE_API bool operator!=(const AQU_StandardUnits& a, const AQU_StandardUnits& b);
