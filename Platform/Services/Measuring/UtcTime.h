#pragma once

#include <array>
#include <chrono>

namespace anadrome {

/// ISO 8601 to the second, "2026-11-23T05:28:37Z", ended by a zero; for years of four digits. Takes no memory
/// and no lock, so a signal handler may ask.
inline std::array<char, 21> utcText(std::chrono::system_clock::time_point time) {
    using namespace std::chrono;
    const auto second = floor<seconds>(time);
    const auto day = floor<days>(second);
    const year_month_day date(day);
    const hh_mm_ss clock(second - day);
    std::array<char, 21> text{"0000-00-00T00:00:00Z"};
    const auto put = [&text](std::size_t last, unsigned long number) {
        for (std::size_t i = last; number > 0; --i, number /= 10)
            text[i] = static_cast<char>('0' + number % 10);
    };
    put(3, static_cast<unsigned long>(static_cast<int>(date.year())) % 10'000);
    put(6, static_cast<unsigned>(date.month()));
    put(9, static_cast<unsigned>(date.day()));
    put(12, static_cast<unsigned long>(clock.hours().count()));
    put(15, static_cast<unsigned long>(clock.minutes().count()));
    put(18, static_cast<unsigned long>(clock.seconds().count()));
    return text;
}

} // namespace anadrome
