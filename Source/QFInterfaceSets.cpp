// The built-in interface codes and the texts made of them.
#include "QFInterfaceSets.h"

#include <atomic>
#include <span>

#include "ZBLCore/ZBLThread.h"

namespace {

using Codes = std::vector<I18NString>;

constexpr const char* kRelational[] = {"CS", "CT", "CT15", "D2", "IF",   "OL",   "OR",   "R3",   "EC",   "XML", "OD",
                                       "IQ", "RB", "SS",   "TD", "OD25", "D225", "IQ25", "RB25", "SS25", "TD25"};
constexpr const char* kMultidimensional[] = {"BW", "CL", "CR", "DO", "EB", "MO", "PC", "YK", "XO", "LA"};

constinit ZBLThreadCriticalSection AQF_InterfaceSetsGuard;
constinit std::atomic<const Codes*> relational{nullptr};
constinit std::atomic<const Codes*> multidimensional{nullptr};

// A set lasts as long as the process.
const Codes& Filled(std::atomic<const Codes*>& set, std::span<const char* const> table) {
    const Codes* codes = set.load(std::memory_order_acquire);
    if (codes == nullptr) {
        const ZBLThreadGuard guard(AQF_InterfaceSetsGuard);
        codes = set.load(std::memory_order_relaxed);
        if (codes == nullptr) {
            codes = new Codes(table.begin(), table.end());
            set.store(codes, std::memory_order_release);
        }
    }
    return *codes;
}

} // namespace

const Codes& AQF_GetRelationalInterfaces() { return Filled(relational, kRelational); }

const Codes& AQF_GetMultidimensionalInterfaces() { return Filled(multidimensional, kMultidimensional); }

I18NString AQF_GetDefaultRelInterfaces() {
    I18NString list;
    for (const I18NString& code : AQF_GetRelationalInterfaces()) {
        if (!list.empty()) list += ",";
        list += code;
    }
    return list;
}
