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

} // namespace

std::optional<Tangent> tangent_by_name(std::string_view name) {
    for (const auto& [known, tangent] : tangent_names) {
        if (name == known) return tangent;
    }
    return std::nullopt;
}

} // namespace headless
