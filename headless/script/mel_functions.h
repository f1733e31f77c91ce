#pragma once

#include "headless/graph/result.h"
#include "headless/session.h"

#include <span>

namespace headless {

/// A function of the language that follows from its arguments alone. Angles are radians, in those that end in "d"
/// degrees. What is random isn't among them: its values would be others than the host's.
struct MelFunction {
    using Values = std::span<const CommandResult>;

    constexpr MelFunction(const char* name, double (*f)(double)) : name(name), arguments(1), one(f) {}
    constexpr MelFunction(const char* name, double (*f)(double, double)) : name(name), arguments(2), two(f) {}
    constexpr MelFunction(const char* name, double (*f)(double, double, double)) : name(name), arguments(3), three(f) {}
    constexpr MelFunction(const char* name, std::size_t arguments, CommandResult (*f)(Values))
        : name(name), arguments(arguments), any(f) {}

    const char* name;
    std::size_t arguments;
    // One of these.
    double (*one)(double) = nullptr;
    double (*two)(double, double) = nullptr;
    double (*three)(double, double, double) = nullptr;
    CommandResult (*any)(Values) = nullptr;
};

/// Null for a name that is none.
const MelFunction* find_mel_function(std::string_view name);
/// An error for a wrong number of arguments, or where the function has no value (the root of -1).
Result<CommandResult> call_function(const MelFunction& function, std::span<const CommandResult> arguments);

} // namespace headless
