// Date-times with a displacement, and the displacement of the machine's zone.
#include "AQE_DateTimeTZ.h"

#include "PlatformOs.h"

namespace {

int LocalDisplacement() {
    TIME_ZONE_INFORMATION zone{};
    GetTimeZoneInformation(&zone);
    const int bias = static_cast<int>(zone.Bias);
    return bias > 0 ? bias / 60 * 100 + bias % 60 : bias / 60 * 100 - bias % 60;
}

} // namespace

AQE_DateTimeTZ::AQE_DateTimeTZ() : AQE_DateTimeTZ(0.0, LocalDisplacement()) {}

AQE_DateTimeTZ::AQE_DateTimeTZ(const AQE_DateTimeTZ& other) = default;

AQE_DateTimeTZ::AQE_DateTimeTZ(const AQE_DateTimeTZ& other, int) : AQE_DateTimeTZ(other) {}

AQE_DateTimeTZ::AQE_DateTimeTZ(double date, int tz)
    : AQE_DateTime(date), m_timeZone(tz), m_tzHour(tz / 100), m_tzMinute(tz % 100) {
    CheckTimeZone();
}

AQE_DateTimeTZ::AQE_DateTimeTZ(int year, int month, int day, int hour, int minute, int second, int tz)
    : AQE_DateTime(year, month, day, hour, minute, second), m_timeZone(tz), m_tzHour(tz / 100), m_tzMinute(tz % 100) {
    CheckTimeZone();
}

AQE_DateTimeTZ::~AQE_DateTimeTZ() = default;

AQE_DateTimeTZ& AQE_DateTimeTZ::operator=(const AQE_DateTimeTZ& other) {
    if (this == &other) return *this;
    AQE_DateTime::operator=(other);
    m_timeZone = other.m_timeZone;
    return *this;
}

AQE_DateTimeTZ& AQE_DateTimeTZ::operator=(double date) {
    AQE_DateTime::operator=(date);
    m_timeZone = GetLocalTZ();
    return *this;
}

AQE_DateTimeTZ& AQE_DateTimeTZ::operator=(const long& time) {
    AQE_DateTime::operator=(time);
    m_timeZone = GetLocalTZ();
    return *this;
}

int AQE_DateTimeTZ::GetLocalTZ() { return LocalDisplacement(); }

int AQE_DateTimeTZ::GetTZHour() const { return m_tzHour; }

int AQE_DateTimeTZ::GetTZMinute() const { return m_tzMinute; }

int AQE_DateTimeTZ::SetDateTime(int year, int month, int day, int hour, int minute, int second, int tz) {
    AQE_DateTime::SetDateTime(year, month, day, hour, minute, second);
    return SetTimeZone(tz);
}

int AQE_DateTimeTZ::SetDate(int year, int month, int day, int tz) {
    AQE_DateTime::SetDate(year, month, day);
    return SetTimeZone(tz);
}

int AQE_DateTimeTZ::SetTime(int hour, int minute, int second, int tz) {
    AQE_DateTime::SetTime(hour, minute, second);
    return SetTimeZone(tz);
}

AQE_DateTime AQE_DateTimeTZ::AdjustNoTZ() const {
    // A displacement that isn't legal can be any int.
    const std::int64_t seconds = (std::int64_t{m_tzHour} * 60 + m_tzMinute) * 60;
    return AQE_DateTime(static_cast<double>(seconds) / 86400.0 + m_date);
}

bool AQE_DateTimeTZ::operator==(const AQE_DateTimeTZ& date) const { return AdjustNoTZ() == date.AdjustNoTZ(); }

bool AQE_DateTimeTZ::operator!=(const AQE_DateTimeTZ& date) const { return AdjustNoTZ() != date.AdjustNoTZ(); }

bool AQE_DateTimeTZ::operator<(const AQE_DateTimeTZ& date) const { return AdjustNoTZ() < date.AdjustNoTZ(); }

bool AQE_DateTimeTZ::operator>(const AQE_DateTimeTZ& date) const { return AdjustNoTZ() > date.AdjustNoTZ(); }

bool AQE_DateTimeTZ::operator<=(const AQE_DateTimeTZ& date) const { return AdjustNoTZ() <= date.AdjustNoTZ(); }

bool AQE_DateTimeTZ::operator>=(const AQE_DateTimeTZ& date) const { return AdjustNoTZ() >= date.AdjustNoTZ(); }

// Hour and minute stay those of the construction.
int AQE_DateTimeTZ::SetTimeZone(int tz) {
    m_timeZone = tz;
    CheckTimeZone();
    return m_status;
}

void AQE_DateTimeTZ::CheckTimeZone() {
    if (m_timeZone < -1259 || m_timeZone >= 1301) SetStatus(invalid);
}
