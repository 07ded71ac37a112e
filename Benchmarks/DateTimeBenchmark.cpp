// A date's number taken apart into its fields, beside the standard library's calendar. The numbers lie anywhere in the
// years 100 to 9999, at whole seconds. "chrono" gives all that the library gives; "chrono date and time" leaves out the
// days of the week and of the year.
#include <chrono>
#include <cmath>
#include <cstring>
#include <ctime>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "AQE_DateTime.h"

#include "RunBenchmarks.h"

namespace {

using namespace std::chrono;

constexpr std::size_t kDates = 4096;
constexpr sys_days kBase = 1899y / December / 30;

const AQE_DateTime g_calendar;

std::vector<double> MakeNumbers() {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> day(-657433, 2958464), second(0, 86399);
    std::vector<double> numbers;
    while (numbers.size() < kDates) {
        const int whole = day(random);
        const double fraction = second(random) / 86400.0;
        numbers.push_back(whole < 0 ? whole - fraction : whole + fraction);
    }
    return numbers;
}

void TakeApartWithBrindle(double number, std::tm& fields) { g_calendar.AQE_TmFromDate(number, fields); }

void TakeApartDateAndTime(double number, std::tm& fields) {
    const int whole = static_cast<int>(number);
    const year_month_day date{kBase + days{whole}};
    const hh_mm_ss time{seconds{static_cast<int>(std::fabs(number - whole) * 86400.0 + 0.5)}};
    fields.tm_year = static_cast<int>(date.year());
    fields.tm_mon = static_cast<int>(static_cast<unsigned>(date.month()));
    fields.tm_mday = static_cast<int>(static_cast<unsigned>(date.day()));
    fields.tm_hour = static_cast<int>(time.hours().count());
    fields.tm_min = static_cast<int>(time.minutes().count());
    fields.tm_sec = static_cast<int>(time.seconds().count());
}

void TakeApartWithChrono(double number, std::tm& fields) {
    TakeApartDateAndTime(number, fields);
    const sys_days day = kBase + days{static_cast<int>(number)};
    fields.tm_wday = static_cast<int>(weekday{day}.c_encoding()) + 1;
    fields.tm_yday = static_cast<int>((day - sys_days{year{fields.tm_year} / January / 1}).count()) + 1;
}

template <class TakeApart>
void Register(const char* run, const std::vector<double>& numbers, TakeApart takeApart) {
    benchmark::RegisterBenchmark(run, [=](benchmark::State& state) {
        std::tm fields{};
        for (auto _ : state)
            for (const double number : numbers) {
                takeApart(number, fields);
                benchmark::DoNotOptimize(fields);
            }
        state.counters["sites"] = static_cast<double>(numbers.size());
    });
}

void RequireSameFields(const std::vector<double>& numbers) {
    for (const double number : numbers) {
        std::tm ours{}, theirs{};
        TakeApartWithBrindle(number, ours);
        TakeApartWithChrono(number, theirs);
        if (std::memcmp(&ours, &theirs, sizeof ours) != 0)
            throw std::runtime_error("the fields of " + std::to_string(number) + " differ");
    }
}

} // namespace

int main(int argc, char** argv) {
    return brindle_benchmark::RunBenchmarks(argc, argv, [](std::string_view) {
        const std::vector<double> numbers = MakeNumbers();
        RequireSameFields(numbers);
        Register("dates/brindle", numbers, TakeApartWithBrindle);
        Register("dates/chrono", numbers, TakeApartWithChrono);
        Register("dates/chrono date and time", numbers, TakeApartDateAndTime);
    });
}
