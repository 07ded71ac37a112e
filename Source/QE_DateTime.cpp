// The calendar and the arithmetic of dates and intervals.
//
// A day's date is found in a calendar whose year begins in March: the leap day is then the last of its year, and each
// step from days to century, year and month is one division of a linear function, without a case for leap years. Only
// January and February are moved over at the end. Days and years are never negative here, since the scale begins with
// the year 0 and its first usable day lies in the year 100.
#include "AQE_DateTime.h"

#include <cmath>
#include <limits>

#include "ZBLCore/ZBLAssertError.h"

namespace {

constexpr double kFirstDate = -657434.0; // 1 January 100
constexpr double kLastDate = 2958465.0;  // 31 December 9999

// Days from 1 January of the year 0 to 30 December 1899.
constexpr int kDaysToBase = 693959;
constexpr unsigned kDaysToMarch = 60; // of the leap year 0

constexpr double kHalfSecond = 5.787037037037037e-6; // in days

// Days before each month of a year that isn't a leap year.
constexpr int MonthDays[] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};

bool IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

// Writes year, month, day and day of the year; the day counts from 1 January of the year 0.
void DateOfDay(unsigned day, std::tm& out) {
    const unsigned quarters = 4 * (day - kDaysToMarch) + 3;
    const unsigned century = quarters / 146097;
    const unsigned quartersOfCentury = quarters % 146097 | 3;
    // Divides by 1461 and keeps the remainder, as the two halves of one product: 2939745 is 2^32 / 1461, rounded up.
    const std::uint64_t product = std::uint64_t{2939745} * quartersOfCentury;
    const auto yearOfCentury = static_cast<unsigned>(product >> 32);
    const unsigned dayOfYear = static_cast<unsigned>(product) / 2939745 / 4; // from 1 March
    // Months and days from (5 * dayOfYear + 461) / 153, as a fraction of 2^16; March is 3, February 14.
    const unsigned months = 2141 * dayOfYear + 197913;
    const unsigned month = months >> 16;

    const bool isInNextYear = dayOfYear >= 306;
    const bool isLeapYear = (yearOfCentury != 0 ? yearOfCentury : century) % 4 == 0;
    out.tm_year = static_cast<int>(century * 100 + yearOfCentury + isInNextYear);
    out.tm_mon = static_cast<int>(isInNextYear ? month - 12 : month);
    out.tm_mday = static_cast<int>((months & 0xffff) / 2141 + 1);
    out.tm_yday = static_cast<int>(isInNextYear ? dayOfYear - 305 : dayOfYear + 60 + isLeapYear);
}

// Towards zero; what no long can hold becomes the nearest one, what isn't a number 0.
long Truncated(double value) {
    using Limits = std::numeric_limits<long>;
    // The greatest long itself has no double; its successor, a power of two, has.
    constexpr double beyond = -static_cast<double>(Limits::min());
    if (value >= beyond) return Limits::max();
    if (value < -beyond) return Limits::min();
    return value == value ? static_cast<long>(value) : 0;
}

// How many of `count` parts of a unit the fraction of the amount fills, with the amount's sign.
long PartOfFraction(double amount, long count) {
    // The half second is that of a day, whatever the unit is, and is added to negative amounts, too.
    double whole;
    const long part = Truncated((std::modf(amount, &whole) + kHalfSecond) * static_cast<double>(count));
    return part >= count ? part - count : part;
}

// Only the low 16 bits count: -1 becomes too large, but -63536 is 2000.
unsigned short Narrowed(int field) { return static_cast<unsigned short>(field); }

void RequireValid(const AQE_DateTime& date) {
    if (date.GetStatus() != AQE_DateTime::valid)
        ZBL_THROW(ZBLAssertError("ZBL_ASSERT(GetStatus() == valid);"), "Source/QE_DateTime", 210, "QE");
}

void RequireBothValid(const AQE_DateTime& self, const AQE_DateTime& date) {
    RequireValid(self);
    if (date.GetStatus() != AQE_DateTime::valid)
        ZBL_THROW(ZBLAssertError("ZBL_ASSERT(date.GetStatus() == valid);"), "Source/QE_DateTime", 211, "QE");
}

} // namespace

AQE_DateTime::AQE_DateTime() : m_date(0.0), m_status(valid) {}

AQE_DateTime::AQE_DateTime(double date) : m_date(date), m_status(valid) {}

AQE_DateTime::AQE_DateTime(int year, int month, int day, int hour, int minute, int second) : AQE_DateTime() {
    SetDateTime(year, month, day, hour, minute, second);
}

AQE_DateTime::AQE_DateTime(const AQE_DateTime& other) = default;

AQE_DateTime::~AQE_DateTime() = default;

AQE_DateTime& AQE_DateTime::operator=(const AQE_DateTime& other) = default;

AQE_DateTime& AQE_DateTime::operator=(double date) {
    m_date = date;
    m_status = valid;
    return *this;
}

AQE_DateTime& AQE_DateTime::operator=(const long& time) {
    const std::time_t instant = time;
    std::tm local{};
    if (localtime_r(&instant, &local) == nullptr) {
        m_status = invalid;
        ZBL_THROW(ZBLAssertError("ZBL_ASSERT(false);"), "Source/QE_DateTime", 140, "QE");
    }
    // The year can be any int, so the sum could be none.
    const auto year = static_cast<unsigned short>(static_cast<unsigned>(local.tm_year) + 1900);
    const bool isDate = AQE_DateFromTm(year, Narrowed(local.tm_mon + 1), Narrowed(local.tm_mday),
                                       Narrowed(local.tm_hour), Narrowed(local.tm_min), Narrowed(local.tm_sec), m_date);
    m_status = isDate ? valid : invalid;
    return *this;
}

bool AQE_DateTime::AQE_DateFromTm(unsigned short year, unsigned short month, unsigned short day, unsigned short hour,
                                  unsigned short minute, unsigned short second, double& out) {
    if (year > 9999 || month == 0 || month > 12) return false;
    const bool isLeapYear = IsLeapYear(year);
    const bool isLeapDay = isLeapYear && month == 2 && day == 29;
    if (day == 0 || day > MonthDays[month] - MonthDays[month - 1] + isLeapDay) return false;
    if (hour > 23 || minute > 59 || second > 59) return false;

    int days = year * 365 + year / 4 - year / 100 + year / 400 + MonthDays[month - 1] + day - kDaysToBase;
    if (month < 3 && isLeapYear) --days;
    const double fraction = ((hour * 60 + minute) * 60 + second) / 86400.0;
    out = days >= 0 ? days + fraction : days - fraction;
    return true;
}

bool AQE_DateTime::AQE_TmFromDate(double date, std::tm& out) const {
    if (!(date >= kFirstDate && date <= kLastDate)) return false;
    // Half a second away from day 0, whatever the side; for 0.0 both sides come to the same.
    const double rounded = date + std::copysign(kHalfSecond, date);
    const int whole = static_cast<int>(rounded);
    const auto day = static_cast<unsigned>(whole + kDaysToBase);
    const auto secondOfDay = static_cast<unsigned>(std::fabs(rounded - whole) * 86400.0);

    DateOfDay(day, out);
    out.tm_wday = static_cast<int>((day - 1) % 7 + 1);
    out.tm_hour = static_cast<int>(secondOfDay / 3600);
    out.tm_min = static_cast<int>(secondOfDay / 60 % 60);
    out.tm_sec = static_cast<int>(secondOfDay % 60);
    return true;
}

void AQE_DateTime::AQE_TmConvertToStandardFormat(std::tm& fields) {
    fields.tm_year -= 1900;
    fields.tm_mon -= 1;
    fields.tm_wday -= 1;
    fields.tm_yday -= 1;
}

double AQE_DateTime::AQE_DoubleFromDate(double date) const {
    if (date >= 0) return date;
    const double day = std::ceil(date);
    return day - (date - day);
}

double AQE_DateTime::AQE_DateFromDouble(double value) {
    if (value >= 0) return value;
    const double day = std::floor(value);
    return day - value + day;
}

AQE_DateTime::DateTimeStatus AQE_DateTime::GetStatus() const { return m_status; }

void AQE_DateTime::SetStatus(DateTimeStatus status) { m_status = status; }

int AQE_DateTime::GetField(int std::tm::*field) const {
    std::tm fields;
    return m_status == valid && AQE_TmFromDate(m_date, fields) ? fields.*field : -1;
}

int AQE_DateTime::GetYear() const { return GetField(&std::tm::tm_year); }

int AQE_DateTime::GetMonth() const { return GetField(&std::tm::tm_mon); }

int AQE_DateTime::GetDay() const { return GetField(&std::tm::tm_mday); }

int AQE_DateTime::GetHour() const { return GetField(&std::tm::tm_hour); }

int AQE_DateTime::GetMinute() const { return GetField(&std::tm::tm_min); }

int AQE_DateTime::GetSecond() const { return GetField(&std::tm::tm_sec); }

int AQE_DateTime::GetDayOfWeek() const { return GetField(&std::tm::tm_wday); }

int AQE_DateTime::GetDayOfYear() const { return GetField(&std::tm::tm_yday); }

int AQE_DateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second) {
    const bool isDate = AQE_DateFromTm(Narrowed(year), Narrowed(month), Narrowed(day), Narrowed(hour), Narrowed(minute),
                                       Narrowed(second), m_date);
    m_status = isDate ? valid : invalid;
    return m_status;
}

int AQE_DateTime::SetDate(int year, int month, int day) { return SetDateTime(year, month, day, 0, 0, 0); }

int AQE_DateTime::SetTime(int hour, int minute, int second) { return SetDateTime(1899, 12, 30, hour, minute, second); }

bool AQE_DateTime::operator==(const AQE_DateTime& date) const {
    return m_status == date.m_status && m_date == date.m_date;
}

bool AQE_DateTime::operator!=(const AQE_DateTime& date) const { return !(*this == date); }

bool AQE_DateTime::operator<(const AQE_DateTime& date) const {
    RequireBothValid(*this, date);
    return AQE_DoubleFromDate(m_date) < AQE_DoubleFromDate(date.m_date);
}

bool AQE_DateTime::operator>(const AQE_DateTime& date) const {
    RequireBothValid(*this, date);
    return AQE_DoubleFromDate(m_date) > AQE_DoubleFromDate(date.m_date);
}

bool AQE_DateTime::operator<=(const AQE_DateTime& date) const {
    RequireBothValid(*this, date);
    return AQE_DoubleFromDate(m_date) <= AQE_DoubleFromDate(date.m_date);
}

bool AQE_DateTime::operator>=(const AQE_DateTime& date) const {
    RequireBothValid(*this, date);
    return AQE_DoubleFromDate(m_date) >= AQE_DoubleFromDate(date.m_date);
}

long AQE_DateTime::IntervalGetDays() const {
    RequireValid(*this);
    return Truncated(m_date);
}

long AQE_DateTime::IntervalGetHours() const {
    RequireValid(*this);
    return PartOfFraction(m_date, 24);
}

long AQE_DateTime::IntervalGetMinutes() const {
    RequireValid(*this);
    return PartOfFraction(m_date * 24.0, 60);
}

long AQE_DateTime::IntervalGetSeconds() const {
    RequireValid(*this);
    return PartOfFraction(m_date * 1440.0, 60);
}

void AQE_DateTime::SetDateTimeInterval(long days, int hours, int minutes, int seconds) {
    m_date = hours / 24.0 + minutes / 1440.0 + seconds / 86400.0 + static_cast<double>(days);
    m_status = valid;
}
