// A date-time with a time-zone displacement. It keeps the time on the wall clock; two values are compared on the scale
// of universal time. A value belongs to one thread at a time.
//
// A displacement is what has to be added to the local time to reach universal time: west of Greenwich is positive, the
// other way round than in ISO 8601. It is a decimal number of the form HHMM with a sign, 330 for 3 hours 30 minutes.
// -1259 to 1300 are legal, whatever the minutes; others are kept, and the value is invalid.
#pragma once

#include <cstdint>

#include "AQE_DateTime.h"
#include "BrindleApi.h"

class BRINDLE_API AQE_DateTimeTZ : public AQE_DateTime {
public:
    // The date 0.0 in the local zone.
    AQE_DateTimeTZ();
    AQE_DateTimeTZ(const AQE_DateTimeTZ& other);
    // A copy; the number isn't read.
    AQE_DateTimeTZ(const AQE_DateTimeTZ& other, int ignored);
    AQE_DateTimeTZ(double date, int tz);
    AQE_DateTimeTZ(int year, int month, int day, int hour, int minute, int second, int tz);
    ~AQE_DateTimeTZ() override;

    // Date, status and displacement of the other value; for the two others the displacement is that of the local zone.
    // None changes GetTZHour and GetTZMinute.
    AQE_DateTimeTZ& operator=(const AQE_DateTimeTZ& other);
    AQE_DateTimeTZ& operator=(double date);
    // As that of AQE_DateTime.
    AQE_DateTimeTZ& operator=(const long& time);

    // The displacement of the machine's zone, without daylight saving; the platform is asked each time. East of
    // Greenwich odd minutes come out turned round: a bias of -90 minutes is -70.
    int GetLocalTZ();

    // Of the displacement with which the value was constructed, both with its sign. What is set or assigned later
    // doesn't change them, and AdjustNoTZ goes by them.
    int GetTZHour() const;
    int GetTZMinute() const;

    // Each answers the new status: invalid for fields that make no date and for an illegal displacement.
    int SetDateTime(int year, int month, int day, int hour, int minute, int second, int tz);
    int SetDate(int year, int month, int day, int tz);
    int SetTime(int hour, int minute, int second, int tz);
    // Leave the displacement alone and unchecked, so that with an illegal one the value is valid, too.
    using AQE_DateTime::SetDate;
    using AQE_DateTime::SetDateTime;
    using AQE_DateTime::SetTime;

    // The value in universal time. It is always valid. Seconds are added to the number, with no calendar and no
    // rounding, so two values of one instant can differ in the last bit.
    AQE_DateTime AdjustNoTZ() const;

    // Compare what AdjustNoTZ gives, so invalid values are compared by their numbers. With an AQE_DateTime on the left
    // the operators are those of that class, which compare the times on the wall clock.
    bool operator==(const AQE_DateTimeTZ& date) const;
    bool operator!=(const AQE_DateTimeTZ& date) const;
    bool operator<(const AQE_DateTimeTZ& date) const;
    bool operator>(const AQE_DateTimeTZ& date) const;
    bool operator<=(const AQE_DateTimeTZ& date) const;
    bool operator>=(const AQE_DateTimeTZ& date) const;

private:
    int SetTimeZone(int tz);
    void CheckTimeZone();

    std::int32_t m_timeZone;
    std::int32_t m_tzHour;
    std::int32_t m_tzMinute;
};
