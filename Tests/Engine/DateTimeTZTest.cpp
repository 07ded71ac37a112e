#include "PlatformHooks.h"

#include "AQE_DateTimeTZ.h"

#include "Support/PageRows.h"

namespace {

using brindle_test::CheckBox;
using Date = AQE_DateTimeTZ;

std::string Parts(const Date& date) {
    const char* const status = date.GetStatus() == Date::valid ? "" : " invalid";
    return std::to_string(date.GetTZHour()) + ":" + std::to_string(date.GetTZMinute()) + status;
}

TEST(DateTimeTZ, LocalZoneFollowsTheBiasAtOnceAndOnlyTheRangeOfADisplacementIsTested) {
    CheckBox("values.md", "bias", [](const std::string& bias) {
        brindle_platform::setTimeZoneBias(std::stoi(bias));
        return std::to_string(Date(2.0, 0).GetLocalTZ()) + " " + Parts(Date(Date(), 99));
    });
    CheckBox("values.md", "displacements", [](const std::string& row) {
        const int tz = std::stoi(row), status = Date(0.0, tz).GetStatus();
        Date set(0.0, 0);
        const bool same = set.SetTime(24, 0, 0, tz) == 1 && set.SetTime(1, 2, 3, tz) == status &&
                          set.AdjustNoTZ() == 3723 / 86400.0 && set.SetDate(2000, 2, 29, tz) == status &&
                          set.AdjustNoTZ() == 36585.0 && set.SetDateTime(2000, 2, 29, 0, 0, 0, tz) == status;
        return Parts(Date(2000, 2, 29, 0, 0, 0, tz)) + (same ? "" : " when constructed");
    });
}

TEST(DateTimeTZ, GoesOnAdjustingByTheDisplacementOfItsConstruction) {
    const Date west(2.5, 330), illegal(2.5, 1301);
    Date set(1.0, 0), assigned(set), number(illegal, 0), time(west);
    set.SetDateTime(2000, 1, 1, 0, 0, 0, 500), assigned = illegal, number = 4.0, time = 946728000L;
    EXPECT_TRUE(set.AdjustNoTZ() == 36526.0 && assigned.AdjustNoTZ() == 2.5 && time > Date(36500.0, 0));
    EXPECT_TRUE(number.AdjustNoTZ() == 46860 / 86400.0 + 4.0 && Parts(number) + Parts(assigned) == "13:10:0 invalid");
}

TEST(DateTimeTZ, InstantsAreComparedWhateverTheStatus) {
    const Date a(36526.5, 100), same(2000, 1, 1, 13, 0, 0, 0), later(36526.5, 1301);
    EXPECT_TRUE(a == same && !(a != same) && a <= same && a >= same && !(a < same) && !(a > same));
    EXPECT_TRUE(a < later && a <= later && later > a && later >= a && a != later && !(a == later));
}

} // namespace
