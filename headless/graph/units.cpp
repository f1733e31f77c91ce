#include "headless/graph/units.h"

#include <array>
#include <charconv>
#include <cmath>

namespace headless {
namespace {

struct Unit {
    std::string_view name, long_name;
    double size;
};

template<std::size_t N>
const Unit* find(const std::array<Unit, N>& table, std::string_view name) {
    for (const Unit& unit : table) {
        if (unit.name == name || unit.long_name == name) return &unit;
    }
    return nullptr;
}

constexpr std::array<Unit, 13> time_units = {{{"hour", "hours", 1.0 / 3600.0},
                                              {"min", "minute", 1.0 / 60.0},
                                              {"sec", "second", 1.0},
                                              {"millisec", "millisecond", 1000.0},
                                              {"millisec", "milisec", 1000.0},
                                              {"game", "15fps", 15.0},
                                              {"film", "24fps", 24.0},
                                              {"pal", "25fps", 25.0},
                                              {"ntsc", "30fps", 30.0},
                                              {"show", "48fps", 48.0},
                                              {"palf", "50fps", 50.0},
                                              {"ntscf", "60fps", 60.0},
                                              {"29.97df", "29.97df", 30000.0 / 1001.0}}};

constexpr std::array<Unit, 8> linear_units = {{{"mm", "millimeter", 0.1},
                                               {"cm", "centimeter", 1.0},
                                               {"m", "meter", 100.0},
                                               {"km", "kilometer", 100000.0},
                                               {"in", "inch", 2.54},
                                               {"ft", "foot", 30.48},
                                               {"yd", "yard", 91.44},
                                               {"mi", "mile", 160934.4}}};

constexpr std::array<Unit, 4> angle_units = {{{"deg", "degree", std::numbers::pi / 180.0},
                                              {"rad", "radian", 1.0},
                                              {"min", "minute", std::numbers::pi / 180.0 / 60.0},
                                              {"sec", "second", std::numbers::pi / 180.0 / 3600.0}}};

// The television rates are thousandths short of a whole one, however a name rounds them.
double exact_rate(double named) {
    for (const double whole : {24.0, 30.0, 48.0, 60.0}) {
        const double rate = whole * 1000.0 / 1001.0;
        if (std::abs(named - rate) < 0.005 && named != whole) return rate;
    }
    return named;
}

} // namespace

std::optional<TimeUnit> TimeUnit::by_name(std::string_view name) {
    if (const Unit* unit = find(time_units, name)) return TimeUnit{std::string(unit->name), unit->size};
    if (!name.ends_with("fps")) return {};
    const std::string_view rate_text = name.substr(0, name.size() - 3);
    double rate = 0.0;
    const auto [end, error] = std::from_chars(rate_text.data(), rate_text.data() + rate_text.size(), rate);
    if (error != std::errc() || end != rate_text.data() + rate_text.size()) return {};
    if (!std::isfinite(rate) || rate < 1e-3 || rate > 1e6) return {};
    return TimeUnit{std::string(name), exact_rate(rate)};
}

std::optional<LinearUnit> LinearUnit::by_name(std::string_view name) {
    const Unit* unit = find(linear_units, name);
    if (!unit) return {};
    return LinearUnit{std::string(unit->name), unit->size};
}

std::optional<AngleUnit> AngleUnit::by_name(std::string_view name) {
    const Unit* unit = find(angle_units, name);
    if (!unit) return {};
    return AngleUnit{std::string(unit->name), unit->size};
}

} // namespace headless
