#pragma once

#include <numbers>
#include <optional>
#include <string>
#include <string_view>

namespace headless {

/// Frames or other steps of a unit of time, by the name that scripts use: "film" is 24 a second. Names outside
/// the list are rates: "120fps", "23.976fps".
struct TimeUnit {
    std::string name = "film";
    double per_second = 24.0;

    double to_seconds(double value) const { return value / per_second; }
    double from_seconds(double seconds) const { return seconds * per_second; }
    bool operator==(const TimeUnit&) const = default;

    /// By its short or long name ("ntsc", "millisec", "millisecond", "250fps"); nothing for another word, or a
    /// rate that isn't positive and finite.
    static std::optional<TimeUnit> by_name(std::string_view name);
};

/// A unit of length, by short or long name ("cm", "centimeter"), with its size in centimetres.
struct LinearUnit {
    std::string name = "cm";
    double centimetres = 1.0;
    bool operator==(const LinearUnit&) const = default;
    static std::optional<LinearUnit> by_name(std::string_view name);
};

/// A unit of angle, by short or long name ("deg", "degree"), with its size in radians.
struct AngleUnit {
    std::string name = "deg";
    double radians = std::numbers::pi / 180.0;
    bool operator==(const AngleUnit&) const = default;
    static std::optional<AngleUnit> by_name(std::string_view name);
};

} // namespace headless
