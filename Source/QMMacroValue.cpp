#include <iterator>
#include <memory>
#include <utility>

#include "AQM_I_MacroFunction.h"
#include "AQM_MacroValue.h"

#include "QMValueMemory.h"

AQM_MacroValue::~AQM_MacroValue() = default;

void* AQM_MacroValue::operator new(std::size_t size) { return QMAllocateSmall(size); }

void AQM_MacroValue::operator delete(void* memory, std::size_t size) noexcept { QMReleaseSmall(memory, size); }

void* AQM_AllocateListEntry(std::size_t size) { return QMAllocateSmall(size); }

void AQM_ReleaseListEntry(void* memory, std::size_t size) noexcept { QMReleaseSmall(memory, size); }

AQM_MacroValueString::AQM_MacroValueString(const I18NString& text) : AQM_MacroValue(MVT_String), value(text) {}

AQM_MacroValueString::AQM_MacroValueString(I18NString&& text) noexcept
    : AQM_MacroValue(MVT_String), value(std::move(text)) {}

AQM_MacroValueArray::AQM_MacroValueArray() : AQM_MacroValue(MVT_Array) {}

// An array in an array in an array is as deep as its maker nested it. The elements of inner arrays move into the outer
// list, so that no depth is walked on the machine stack.
AQM_MacroValueArray::~AQM_MacroValueArray() {
    while (!values.empty()) {
        AQM_MacroValue* const element = values.front();
        if (element && element->GetValueType() == MVT_Array)
            if (auto* const inner = dynamic_cast<AQM_MacroValueArray*>(element))
                values.splice(values.end(), inner->values);
        values.pop_front();
        delete element;
    }
}

void AQM_MacroValueArray::AddValue(AQM_MacroValue* value) {
    std::unique_ptr<AQM_MacroValue> owner(value);
    values.push_back(value);
    owner.release();
}

int AQM_MacroValueArray::Size() const { return static_cast<int>(values.size()); }

AQM_MacroValue* AQM_MacroValueArray::Get(int index) const {
    if (index < 0 || index >= Size()) return nullptr;
    return *std::next(values.begin(), index);
}

AQM_I_MacroFunction::~AQM_I_MacroFunction() = default;
