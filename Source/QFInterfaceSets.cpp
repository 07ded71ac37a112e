// The built-in interface codes and the texts made of them.
#include "QFInterfaceSets.h"

#include <atomic>
#include <memory>
#include <span>

#include "ZBLCore/ZBLThread.h"

#include "QEMadeOnce.h"

namespace {

using Codes = std::vector<I18NString>;

constexpr const char* kRelational[] = {"CS", "CT", "CT15", "D2", "IF",   "OL",   "OR",   "R3",   "EC",   "XML", "OD",
                                       "IQ", "RB", "SS",   "TD", "OD25", "D225", "IQ25", "RB25", "SS25", "TD25"};
constexpr const char* kMultidimensional[] = {"BW", "CL", "CR", "DO", "EB", "MO", "PC", "YK", "XO", "LA"};

constinit ZBLThreadCriticalSection AQF_InterfaceSetsGuard;
constinit std::atomic<const Codes*> relational{nullptr};
constinit std::atomic<const Codes*> multidimensional{nullptr};

const Codes& Filled(std::atomic<const Codes*>& set, std::span<const char* const> table) {
    return QEMadeOnce(set, AQF_InterfaceSetsGuard,
                      [table] { return std::make_unique<Codes>(table.begin(), table.end()); });
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
