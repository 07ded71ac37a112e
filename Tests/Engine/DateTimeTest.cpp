#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <sstream>

#include "AQE_DateTime.h"

#include "Support/FailureCheck.h"
#include "Support/PageRows.h"

namespace {

using namespace brindle_test;
using Date = AQE_DateTime;

struct Number : Date {
    using Date::Date;
    std::string Get() const { return (std::ostringstream() << std::setprecision(16) << m_date).str(); }
};

const auto Read = [](const Date& date, auto first, auto... rest) {
    return (std::to_string((date.*first)()) + ... + (" " + std::to_string((date.*rest)())));
};

std::string Parts(const Date& date) {
    return Read(date, &Date::IntervalGetDays, &Date::IntervalGetHours, &Date::IntervalGetMinutes,
                &Date::IntervalGetSeconds);
}

TEST(DateTimeCalendar, EveryDayOfTheYears100To9999ComesBackFromItsFields) {
    for (int day = -657434; day <= 2958465; ++day) {
        // Another time each day; the two outermost days have their midnight alone, and 22459 divides what lies between.
        const int second = (day + 657434) % 22459 * 7919 % 86400;
        const double number = day + (day < 0 ? -second : second) / 86400.0;
        const std::time_t time = (day - 25569) * 86400L + second;
        std::tm f{}, expected{};
        Date().AQE_TmFromDate(number, f);
        ASSERT_EQ(Date(f.tm_year, f.tm_mon, f.tm_mday, f.tm_hour, f.tm_min, f.tm_sec), Date(number)) << number;
        Date().AQE_TmConvertToStandardFormat(f);
        gmtime_r(&time, &expected);
        ASSERT_EQ(std::memcmp(&f, &expected, offsetof(std::tm, tm_isdst)), 0) << number;
    }
}

TEST(DateTimeCalendar, FieldsAreThoseOfTheNearestSecondAndBadOnesLeaveTheNumberAlone) {
    CheckBox("values.md", "fields", [](const std::string& number) {
        return Read(std::stod(number), &Date::GetYear, &Date::GetMonth, &Date::GetDay, &Date::GetHour, &Date::GetMinute,
                    &Date::GetSecond, &Date::GetDayOfWeek, &Date::GetDayOfYear);
    });
    Number date;
    CheckBox("values.md", "dates", [&date](const std::string& row) {
        int f[6] = {};
        std::sscanf(row.c_str(), "%d-%d-%d %d:%d:%d", &f[0], &f[1], &f[2], &f[3], &f[4], &f[5]);
        const int status = (date = 0.5).SetDateTime(f[0], f[1], f[2], f[3], f[4], f[5]);
        return std::to_string(status) + " " + date.Get();
    });
    EXPECT_TRUE(date.GetYear() == -1 && !date.SetDate(1899, 12, 28) && !date.SetTime(18, 0, 0) && date.Get() == "0.75");
    EXPECT_EQ(date.SetDate(2000, 0, 1), 1) << "no day of month 0 is looked up";
}

TEST(DateTimeInterval, IsReadWithHalfASecondOfADayAddedAndSetFromTheHoursOn) {
    CheckBox("values.md", "intervals", [](const std::string& number) { return Parts(std::stod(number)); });
    CheckBox("values.md", "sums", [](const std::string& row) {
        int p[4] = {};
        std::sscanf(row.c_str(), "%d %d %d %d", &p[0], &p[1], &p[2], &p[3]);
        Number date(1900, 2, 29, 0, 0, 0);
        date.SetDateTimeInterval(p[0], p[1], p[2], p[3]);
        return date.Get() + ": " + Parts(date);
    });
}

TEST(DateTimeOrder, IsThatOfTimeOnBothSidesOfDayZero) {
    Date calendar, x(-4.0);
    for (const double number : {-3.0, -2.0, -2.5, -1.0, -1.25, -1.75, 0.0, 0.25, -0.5, 0.75, 2958465.0}) {
        const Date y(number);
        EXPECT_TRUE(x < y && x <= y && !(x > y) && !(x >= y) && x != y && !(x == y)) << number;
        EXPECT_TRUE(y > x && y >= x && !(y < x) && !(y <= x) && y <= y && y >= y && y == y) << number;
        EXPECT_EQ(calendar.AQE_DateFromDouble(calendar.AQE_DoubleFromDate(number)), number == -0.5 ? 0.5 : number);
        x = y;
    }
}

TEST(DateTimeOrder, InvalidValuesAreEqualByNumberAndAssertOtherwise) {
    const Date good;
    const Number bad(1900, 2, 29, 0, 0, 0);
    EXPECT_TRUE(bad == Date(bad) && bad != good && bad.Get() == "0");
    const std::string self = "ZBLAssertError 0 [text]ZBL_ASSERT(GetStatus() == valid); Source/QE_DateTime:210";
    const std::string other = "ZBLAssertError 0 [text]ZBL_ASSERT(date.GetStatus() == valid); Source/QE_DateTime:211";
    for (const auto compare : {&Date::operator<, &Date::operator>, &Date::operator<=, &Date::operator>=})
        EXPECT_EQ(FailureOf([&] { (bad.*compare)(bad); }) + FailureOf([&] { (good.*compare)(bad); }), self + other);
    for (const auto part :
         {&Date::IntervalGetDays, &Date::IntervalGetHours, &Date::IntervalGetMinutes, &Date::IntervalGetSeconds})
        EXPECT_EQ(FailureOf([&] { (bad.*part)(); }), self);
}

TEST(DateTimeFromTime, IsTheLocalTime) {
    setenv("TZ", "XXX5YYY,M3.2.0,M11.1.0", 1), tzset();
    Number date;
    const auto assign = [&date](long time) {
        const std::string failure = FailureOf([&] { date.Date::operator=(time); });
        return std::to_string(date.GetStatus()) + " " + date.Get() + " " + failure;
    };
    EXPECT_EQ(assign(253402318800), "1 0 nothing thrown") << "1 January 10000";
    EXPECT_EQ(assign(1719950400), "0 45475.66666666666 nothing thrown") << "in summer";
    EXPECT_EQ(assign(1L << 62), "1 45475.66666666666 ZBLAssertError 0 [text]ZBL_ASSERT(false); Source/QE_DateTime:140");
}

} // namespace
