#include "headless/animation/tangents.h"

#include <array>
#include <utility>

namespace headless {
namespace {

constexpr std::array<std::pair<std::string_view, Tangent>, 11> tangent_names = {{{"fixed", Tangent::fixed},
                                                                                 {"linear", Tangent::linear},
                                                                                 {"flat", Tangent::flat},
                                                                                 {"step", Tangent::step},
                                                                                 {"slow", Tangent::slow},
                                                                                 {"fast", Tangent::fast},
                                                                                 {"spline", Tangent::spline},
                                                                                 {"clamped", Tangent::clamped},
                                                                                 {"plateau", Tangent::plateau},
                                                                                 {"stepnext", Tangent::step_next},
                                                                                 {"auto", Tangent::automatic}}};

constexpr std::array<std::pair<std::string_view, Infinity>, 5> infinity_names = {
    {{"constant", Infinity::constant},
     {"linear", Infinity::linear},
     {"cycle", Infinity::cycle},
     {"cycleRelative", Infinity::cycle_with_offset},
     {"oscillate", Infinity::oscillate}}};

template<typename T, std::size_t N>
std::optional<T> by_name(const std::array<std::pair<std::string_view, T>, N>& names, std::string_view wanted) {
    for (const auto& [name, value] : names) {
        if (name == wanted) return value;
    }
    return std::nullopt;
}

template<typename T, std::size_t N>
std::string_view name_in(const std::array<std::pair<std::string_view, T>, N>& names, T wanted,
                         std::string_view otherwise) {
    for (const auto& [name, value] : names) {
        if (value == wanted) return name;
    }
    return otherwise;
}

} // namespace

std::optional<Tangent> tangent_by_name(std::string_view name) {
    return by_name(tangent_names, name);
}
std::string_view name_of(Tangent tangent) {
    return name_in(tangent_names, tangent, "spline");
}
std::optional<Infinity> infinity_by_name(std::string_view name) {
    return by_name(infinity_names, name);
}
std::string_view name_of(Infinity infinity) {
    return name_in(infinity_names, infinity, "constant");
}

} // namespace headless
