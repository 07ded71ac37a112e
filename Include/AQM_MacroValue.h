// The run-time values of the macro language: a text, or a list of values.
#pragma once

#include <list>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// The base of all values. Immutable once it is handed on; one thread at a time.
class BRINDLE_API AQM_MacroValue {
public:
    enum MacroValueType : int { MVT_None = 0, MVT_String = 1, MVT_Array = 2, MVT_Map = 3 };

    AQM_MacroValue(const AQM_MacroValue&) = delete;
    AQM_MacroValue& operator=(const AQM_MacroValue&) = delete;
    virtual ~AQM_MacroValue();
    MacroValueType GetValueType() const { return type; }

protected:
    explicit AQM_MacroValue(MacroValueType valueType = MVT_None) : type(valueType) {}

private:
    MacroValueType type;
};

class BRINDLE_API AQM_MacroValueString : public AQM_MacroValue {
public:
    explicit AQM_MacroValueString(const I18NString& text);
    explicit AQM_MacroValueString(I18NString&& text) noexcept;
    const I18NString& GetValue() const { return value; }

private:
    friend class AQM_MacroEvaluator;
    I18NString value;
};

// A list that owns its elements; null entries are allowed. The argument frame of a call is one.
class BRINDLE_API AQM_MacroValueArray : public AQM_MacroValue {
public:
    AQM_MacroValueArray();
    ~AQM_MacroValueArray() override;

    // Appends the value and takes ownership of it, also when memory runs out.
    void AddValue(AQM_MacroValue* value);
    int Size() const;
    // The element at that index from the front, still the array's; null outside. It walks the list: a function that
    // reads a whole array goes by GetValues.
    AQM_MacroValue* Get(int index) const;
    // The elements in order, still the array's.
    const std::list<AQM_MacroValue*>& GetValues() const { return values; }

private:
    friend class AQM_MacroEvaluator;
    std::list<AQM_MacroValue*> values;
};
