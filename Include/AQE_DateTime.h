// A date, a time of day, a date-time or an interval of days and time: one double on the OLE Automation scale, and a
// status that says whether it can be used. Which of these a value is, is up to the caller, who picks the Get or the
// IntervalGet operations. The calendar is computed here, so that every platform has the same one for the years 100 to
// 9999. A value belongs to one thread at a time.
#pragma once

#include <cstdint>
#include <ctime>

#include "BrindleApi.h"

class BRINDLE_API AQE_DateTime {
public:
    enum DateTimeStatus : std::int32_t { valid = 0, invalid = 1 };

    // 30 December 1899, 00:00.
    AQE_DateTime();
    // Days since 30 December 1899 and the part of a day. In front of it the minus sign is on both: -1.25 is 29 December
    // 1899, 06:00. Every number is valid; the fields are those of numbers from -657434.0 (1 January 100) to 2958465.0
    // (31 December 9999, 00:00).
    AQE_DateTime(double date);
    // As SetDateTime on 0.0.
    AQE_DateTime(int year, int month, int day, int hour, int minute, int second);
    AQE_DateTime(const AQE_DateTime& other);
    virtual ~AQE_DateTime();

    AQE_DateTime& operator=(const AQE_DateTime& other);
    AQE_DateTime& operator=(double date);
    // The local time of a time_t. A plain int could mean this or the double: write 5.0 or 5L. A time whose fields make
    // no date leaves the status invalid; one that has no local time throws ZBLAssertError besides.
    AQE_DateTime& operator=(const long& time);

    // False, and nothing in `out`, for fields that make no date; the year may be 0 to 9999.
    bool AQE_DateFromTm(unsigned short year, unsigned short month, unsigned short day, unsigned short hour,
                        unsigned short minute, unsigned short second, double& out);
    // The fields of a date, to the nearest second. What rounds up to 24:00 is 00:00 of the next day, but of the day
    // before for numbers below 0, whose half second goes by their sign. In `out` the year is whole, months, weekdays
    // (Sunday) and days of the year count from 1; tm_isdst is left alone.
    // False, and nothing in `out`, for a number that has no fields.
    bool AQE_TmFromDate(double date, std::tm& out) const;
    // From the form above to the C library's.
    void AQE_TmConvertToStandardFormat(std::tm& fields);
    // From a date to a number that is linear in time, and back: -1.25 and -0.75.
    double AQE_DoubleFromDate(double date) const;
    double AQE_DateFromDouble(double value);

    DateTimeStatus GetStatus() const;
    void SetStatus(DateTimeStatus status);

    // -1 where the status is invalid or the number has no fields. Months, weekdays (Sunday) and days of the year count
    // from 1.
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    int GetDayOfWeek() const;
    int GetDayOfYear() const;

    // Each answers the new status. Fields that make no date leave the number alone and the status invalid. Only the low
    // 16 bits of a field count. A year below 100 is valid and has no fields.
    int SetDateTime(int year, int month, int day, int hour, int minute, int second);
    int SetDate(int year, int month, int day);
    // The time on 30 December 1899.
    int SetTime(int hour, int minute, int second);

    // The same status and the same number; invalid values are compared, too.
    bool operator==(const AQE_DateTime& date) const;
    bool operator!=(const AQE_DateTime& date) const;
    // In the order of time. ZBLAssertError for an invalid value, this one first.
    bool operator<(const AQE_DateTime& date) const;
    bool operator>(const AQE_DateTime& date) const;
    bool operator<=(const AQE_DateTime& date) const;
    bool operator>=(const AQE_DateTime& date) const;

    // Whole days, and the rest as hours, minutes and seconds with the sign of the interval. Before each of these three
    // is cut off, 5.787037037037037e-6 is added, whatever the sign: half a second to hours, 21 ms to minutes, 0.3 ms to
    // seconds. So negative intervals read short: -1 hour is 0 hours. What fills the next unit with it reads 0 and is
    // carried nowhere: 0.999999 days are 0 hours, 59 minutes and 59 seconds. ZBLAssertError for an invalid value.
    long IntervalGetDays() const;
    long IntervalGetHours() const;
    long IntervalGetMinutes() const;
    long IntervalGetSeconds() const;
    // The sum of the four, of whatever size and sign; always valid.
    void SetDateTimeInterval(long days, int hours, int minutes, int seconds);

protected:
    double m_date;
    DateTimeStatus m_status;

private:
    int GetField(int std::tm::*field) const;
};
