#include "headless/script/mel_functions.h"

#include "headless/script/commands.h"
#include "headless/script/mel_values.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace headless {
namespace {

using Values = MelFunction::Values;

constexpr double degree = std::numbers::pi / 180.0;

double linear_step(double start, double end, double x) {
    if (start == end) return x < start ? 0.0 : 1.0;
    return std::clamp((x - start) / (end - start), 0.0, 1.0);
}

// Between two values with a slope at either, by the cubic through them.
CommandResult hermite(Values in) {
    const double x = mel_number(in[4]), x2 = x * x, x3 = x2 * x;
    return number_result(mel_number(in[0]) * (2 * x3 - 3 * x2 + 1) + mel_number(in[1]) * (3 * x2 - 2 * x3) +
                         mel_number(in[2]) * (x3 - 2 * x2 + x) + mel_number(in[3]) * (x3 - x2));
}

// Of a whole number a whole number.
CommandResult absolute(Values in) {
    return *mel_binary(mel_number(in[0]) < 0.0 ? "-" : "+", integer_result(0), in[0]);
}

constexpr MelFunction functions[] = {
    {"abs", 1, absolute},
    {"acos", [](double x) { return std::acos(x); }},
    {"acosd", [](double x) { return std::acos(x) / degree; }},
    {"asin", [](double x) { return std::asin(x); }},
    {"asind", [](double x) { return std::asin(x) / degree; }},
    {"atan", [](double x) { return std::atan(x); }},
    {"atan2", [](double y, double x) { return std::atan2(y, x); }},
    {"atan2d", [](double y, double x) { return std::atan2(y, x) / degree; }},
    {"atand", [](double x) { return std::atan(x) / degree; }},
    {"ceil", [](double x) { return std::ceil(x); }},
    {"clamp", [](double low, double high, double x) { return std::max(low, std::min(high, x)); }},
    {"cos", [](double x) { return std::cos(x); }},
    {"cosd", [](double x) { return std::cos(x * degree); }},
    {"deg_to_rad", [](double x) { return x * degree; }},
    {"exp", [](double x) { return std::exp(x); }},
    {"floor", [](double x) { return std::floor(x); }},
    {"fmod", [](double x, double y) { return std::fmod(x, y); }},
    {"hermite", 5, hermite},
    {"hypot", [](double x, double y) { return std::hypot(x, y); }},
    {"linstep", linear_step},
    {"log", [](double x) { return std::log(x); }},
    {"log10", [](double x) { return std::log10(x); }},
    {"max", [](double x, double y) { return std::max(x, y); }},
    {"min", [](double x, double y) { return std::min(x, y); }},
    {"pow", [](double x, double y) { return std::pow(x, y); }},
    {"rad_to_deg", [](double x) { return x / degree; }},
    {"sign", [](double x) { return x > 0.0   ? 1.0
                                   : x < 0.0 ? -1.0
                                             : 0.0; }},
    {"sin", [](double x) { return std::sin(x); }},
    {"sind", [](double x) { return std::sin(x * degree); }},
    {"size", 1, [](Values in) { return integer_result(static_cast<std::int64_t>(mel_size(in[0]))); }},
    {"smoothstep",
     [](double start, double end, double x) {
         const double part = linear_step(start, end, x);
         return part * part * (3.0 - 2.0 * part);
     }},
    {"sqrt", [](double x) { return std::sqrt(x); }},
    {"tan", [](double x) { return std::tan(x); }},
    {"tand", [](double x) { return std::tan(x * degree); }},
    {"trunc", [](double x) { return std::trunc(x); }},
};
static_assert(std::ranges::is_sorted(functions, {}, [](const MelFunction& f) { return std::string_view(f.name); }));

CommandResult value_of(const MelFunction& function, Values in) {
    if (function.any) return function.any(in);
    if (function.one) return number_result(function.one(mel_number(in[0])));
    if (function.two) return number_result(function.two(mel_number(in[0]), mel_number(in[1])));
    return number_result(function.three(mel_number(in[0]), mel_number(in[1]), mel_number(in[2])));
}

} // namespace

const MelFunction* find_mel_function(std::string_view name) {
    const auto* at =
        std::ranges::lower_bound(functions, name, {}, [](const MelFunction& f) { return std::string_view(f.name); });
    return at != std::end(functions) && at->name == name ? at : nullptr;
}

Result<CommandResult> call_function(const MelFunction& function, Values arguments) {
    if (arguments.size() != function.arguments)
        return Error{"Wrong number of arguments on call to " + std::string(function.name)};
    CommandResult out = value_of(function, arguments);
    if (!std::isfinite(mel_number(out))) return Error{std::string(function.name) + " has no value there"};
    return out;
}

} // namespace headless
