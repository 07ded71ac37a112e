// Constant strings by number, texts of resource files, the format for doubles. Each constant string is made when it is
// first asked for.
#include "QERes.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <memory>

#include "Mortise/AUT_Resource.h"
#include "Mortise/AUT_Text.h"
#include "ZBLCore/ZBLThread.h"

#include "QEMadeOnce.h"
#include "QE_ResourceTable.h"

namespace {

constinit std::array<std::atomic<const I18NString*>, kQEResourceCount> strings{};
constinit ZBLThreadCriticalSection fillLock;

// Out of line, so that getString needs no stack frame for an entry that is there.
[[gnu::noinline]] const I18NString& MakeString(std::size_t index) {
    return QEMadeOnce(strings[index], fillLock,
                      [index] { return std::make_unique<I18NString>(kQEResourceTable[index]); });
}

} // namespace

const I18NString& QERes::getString(long index) {
    // A negative number is beyond the end here, too.
    const auto place = static_cast<std::size_t>(index);
    if (place >= kQEResourceCount) return AUT_GetEmptyString();
    const I18NString* string = strings[place].load(std::memory_order_acquire);
    return string != nullptr ? *string : MakeString(place);
}

I18NString AQE_ResourceGetString(int id, I18NString& outFile, const I18NString& resourceFile) {
    I18NString text;
    AUT_ResourceLoadString(resourceFile, outFile, id, text);
    return text;
}

I18NString AQE_ResourceGetString(int id, const I18NString& resourceFile) {
    I18NString outFile;
    return AQE_ResourceGetString(id, outFile, resourceFile);
}

char* AQE_UtilityGetDoubleFormatString(char* buffer) {
    constexpr std::size_t kFormatSize = sizeof "%.15g";
    std::snprintf(buffer, kFormatSize, "%%.%dg", std::numeric_limits<double>::digits10);
    return buffer;
}
