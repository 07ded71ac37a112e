#include "ZBLCore/ZBLUtSystemInfo.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "OS/Published.h"
#include "OS/SystemInfo.h"
#include "PlatformHooks.h"

namespace {

constexpr int kFileNameForm = 0;

constinit brindle_platform::Published<std::function<I18NString(int)>> g_stamp;
constinit brindle_platform::Published<unsigned long> g_processId;

} // namespace

I18NString ZBLUtSystemInfo::getTimeStamp(int form) {
    if (const auto* stamp = g_stamp.get()) return (*stamp)(form);
    std::string text = brindle_platform::utcTimeStamp();
    if (form == kFileNameForm) {
        text.replace(text.find('.'), std::string::npos, "Z");
        std::erase_if(text, [](char c) { return c == '-' || c == ':'; });
    }
    return I18NString(std::string_view(text));
}

unsigned long ZBLUtSystemInfo::getProcessId() {
    const unsigned long* const number = g_processId.get();
    return number != nullptr ? *number : brindle_platform::currentProcessNumber();
}

namespace brindle_platform {

void setTimeStamp(std::function<I18NString(int form)> stamp) { g_stamp.setOrClear(std::move(stamp)); }

void setProcessId(std::optional<unsigned long> number) { g_processId.setOrClear(number); }

} // namespace brindle_platform
