// The run-time values of the macro language: a text, or a list of values.
#pragma once

#include <cstddef>
#include <vector>

#include "ZBLCore/I18NString.h"

#include "BrindleApi.h"

// The base of all values. Immutable once it is handed on; one thread at a time. The type tells the class: no class but
// AQM_MacroValueString and those derived from it is a string, and none but AQM_MacroValueArray and its own an array.
class BRINDLE_API AQM_MacroValue {
public:
    enum MacroValueType : int { MVT_None = 0, MVT_String = 1, MVT_Array = 2, MVT_Map = 3 };

    AQM_MacroValue(const AQM_MacroValue&) = delete;
    AQM_MacroValue& operator=(const AQM_MacroValue&) = delete;
    virtual ~AQM_MacroValue();

    // Values are made and dropped by the dozen in every expansion; each thread keeps the memory of a few.
    static void* operator new(std::size_t size);
    static void operator delete(void* memory, std::size_t size) noexcept;

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

// Gives value lists their memory, in the same way.
BRINDLE_API void* AQM_AllocateValueList(std::size_t size);
BRINDLE_API void AQM_ReleaseValueList(void* memory, std::size_t size) noexcept;

template <class T>
struct AQM_ValueListAllocator {
    using value_type = T;
    AQM_ValueListAllocator() = default;
    template <class U>
    AQM_ValueListAllocator(const AQM_ValueListAllocator<U>&) noexcept {}
    T* allocate(std::size_t count) { return static_cast<T*>(AQM_AllocateValueList(count * sizeof(T))); }
    void deallocate(T* memory, std::size_t count) noexcept { AQM_ReleaseValueList(memory, count * sizeof(T)); }
    friend bool operator==(const AQM_ValueListAllocator&, const AQM_ValueListAllocator&) = default;
};

using AQM_MacroValueList = std::vector<AQM_MacroValue*, AQM_ValueListAllocator<AQM_MacroValue*>>;

// A list that owns its elements; null entries are allowed. The argument frame of a call is one.
class BRINDLE_API AQM_MacroValueArray : public AQM_MacroValue {
public:
    AQM_MacroValueArray();
    ~AQM_MacroValueArray() override;

    // Appends the value and takes ownership of it, also when memory runs out.
    void AddValue(AQM_MacroValue* value);
    int Size() const;
    // The element at that index from the front, still the array's; null outside.
    AQM_MacroValue* Get(int index) const;
    // The elements in order, still the array's.
    const AQM_MacroValueList& GetValues() const { return values; }

private:
    friend class AQM_MacroEvaluator;
    // Deletes the values but for the arrays among them, which it puts before the chain and answers the new first.
    AQM_MacroValueArray* DeleteValues(AQM_MacroValueArray* chain);

    AQM_MacroValueList values;
    AQM_MacroValueArray* nextInChain = nullptr; // while they are deleted
};
