// Values take their memory from QMValueMemory, and arrays free what is in them without recursion.
#include "AQM_MacroValue.h"

#include <memory>
#include <utility>

#include "AQM_I_MacroFunction.h"

#include "QMValueMemory.h"

AQM_MacroValue::~AQM_MacroValue() = default;

void* AQM_MacroValue::operator new(std::size_t size) { return QMAllocateSmall(size); }

void AQM_MacroValue::operator delete(void* memory, std::size_t size) noexcept { QMReleaseSmall(memory, size); }

void* AQM_AllocateValueList(std::size_t size) { return QMAllocateSmall(size); }

void AQM_ReleaseValueList(void* memory, std::size_t size) noexcept { QMReleaseSmall(memory, size); }

AQM_MacroValueString::AQM_MacroValueString(const I18NString& text) : AQM_MacroValue(MVT_String), value(text) {}

AQM_MacroValueString::AQM_MacroValueString(I18NString&& text) noexcept
    : AQM_MacroValue(MVT_String), value(std::move(text)) {}

AQM_MacroValueArray::AQM_MacroValueArray() : AQM_MacroValue(MVT_Array) {}

// An array in an array in an array is as deep as its maker nested it, so no depth is walked on the machine stack: inner
// arrays wait in a chain until the one that holds them is done.
AQM_MacroValueArray::~AQM_MacroValueArray() {
    AQM_MacroValueArray* chain = DeleteValues(nullptr);
    while (chain) {
        const std::unique_ptr<AQM_MacroValueArray> first(chain);
        chain = first->DeleteValues(first->nextInChain);
    }
}

AQM_MacroValueArray* AQM_MacroValueArray::DeleteValues(AQM_MacroValueArray* chain) {
    for (AQM_MacroValue* const value : values) {
        const bool mayBeArray = value && value->GetValueType() == MVT_Array;
        if (auto* const inner = mayBeArray ? dynamic_cast<AQM_MacroValueArray*>(value) : nullptr) {
            inner->nextInChain = chain;
            chain = inner;
        } else {
            delete value;
        }
    }
    values.clear();
    return chain;
}

void AQM_MacroValueArray::AddValue(AQM_MacroValue* value) {
    // Most lists are argument frames, and few of them hold more than this.
    constexpr std::size_t kFirstCapacity = 4;
    std::unique_ptr<AQM_MacroValue> owner(value);
    if (values.capacity() == 0) values.reserve(kFirstCapacity);
    values.push_back(value);
    owner.release();
}

int AQM_MacroValueArray::Size() const { return static_cast<int>(values.size()); }

AQM_MacroValue* AQM_MacroValueArray::Get(int index) const {
    if (index < 0 || index >= Size()) return nullptr;
    return values[static_cast<std::size_t>(index)];
}

AQM_I_MacroFunction::~AQM_I_MacroFunction() = default;
