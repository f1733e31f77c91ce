#include "headless/files/frame_rate.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace headless {
namespace {

// The rates that every version of the host has a time unit for.
constexpr std::array<int, 38> host_rates = {2,   3,   4,   5,   6,   8,   10,  12,   15,   16,   20,   24,  25,
                                            30,  40,  48,  50,  60,  75,  80,  100,  120,  125,  150,  200, 240,
                                            250, 300, 375, 400, 500, 600, 750, 1200, 1500, 2000, 3000, 6000};

TimeUnit whole_unit(double rate) {
    const std::string name = rate == 1.0      ? "sec"
                             : rate == 1000.0 ? "millisec"
                                              : std::to_string(static_cast<int>(rate)) + "fps";
    return TimeUnit::by_name(name).value_or(TimeUnit{});
}

TimeUnit nearest_unit(double rate) {
    const auto distance = [rate](int known) { return std::abs(std::log(rate / known)); };
    int best = host_rates.front();
    for (const int known : host_rates) {
        if (distance(known) < distance(best)) best = known;
    }
    return whole_unit(best);
}

} // namespace

FrameRate frame_rate(double frame_time, double last_digit) {
    if (!(frame_time > 0.0)) return {};
    // What is off by a half stems from rounding, by one from cutting; no number knows better than single precision.
    const auto stands_for = [&](double rate, double digits, double share) {
        const double off = std::abs(1.0 / rate - frame_time);
        const double known = std::max(digits * last_digit * (1.0 + 1e-6), 6e-8 * frame_time);
        return off <= known && off <= share * frame_time;
    };
    constexpr double few_digits = 1.5e-2, digits_enough = 1.5e-3;
    const double whole = std::round(1.0 / frame_time);
    const bool whole_known = whole >= 1.0 && whole <= 1e6;
    const TimeUnit usual = nearest_unit(1.0 / frame_time);
    if (whole_known && stands_for(whole, 0.5, digits_enough)) return {whole_unit(whole), whole};
    if (stands_for(usual.per_second, 0.5, few_digits)) return {usual, usual.per_second};
    for (const char* name : {"23.976fps", "29.97fps", "47.952fps", "59.94fps"}) {
        const TimeUnit unit = TimeUnit::by_name(name).value_or(TimeUnit{});
        if (stands_for(unit.per_second, 0.5, digits_enough)) return {unit, unit.per_second};
    }
    if (whole_known && stands_for(whole, 1.0, digits_enough)) return {whole_unit(whole), whole};
    if (stands_for(usual.per_second, 1.0, few_digits)) return {usual, usual.per_second};
    return {usual, 1.0 / frame_time};
}

} // namespace headless
