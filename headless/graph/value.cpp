#include "headless/graph/value.h"

#include <cmath>
#include <limits>

namespace headless {

double Value::number() const {
    if (const auto* v = std::get_if<double>(&data_)) return *v;
    if (const auto* v = std::get_if<std::int64_t>(&data_)) return static_cast<double>(*v);
    if (const auto* v = std::get_if<bool>(&data_)) return *v ? 1.0 : 0.0;
    if (const auto* v = std::get_if<Vector3>(&data_)) return v->x;
    return 0.0;
}

std::int64_t Value::integer() const {
    if (const auto* v = std::get_if<std::int64_t>(&data_)) return *v;
    const double v = number();
    if (std::isnan(v)) return 0;
    if (v >= 9.2e18) return std::numeric_limits<std::int64_t>::max();
    if (v <= -9.2e18) return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(v);
}

Vector3 Value::vector() const {
    if (const auto* v = std::get_if<Vector3>(&data_)) return *v;
    const double v = number();
    return {v, v, v};
}

const Matrix& Value::matrix() const {
    static const Matrix identity;
    const auto* held = get_if<Matrix>();
    return held ? *held : identity;
}

const std::string& Value::text() const {
    static const std::string none;
    const auto* held = std::get_if<std::string>(&data_);
    return held ? *held : none;
}

bool Value::operator==(const Value& other) const {
    if (data_.index() != other.data_.index()) return false;
    return std::visit(
        [&other]<typename T>(const T& mine) {
            const T& theirs = *std::get_if<T>(&other.data_);
            if constexpr (requires { *mine == *theirs; }) {
                return mine == theirs || (mine && theirs && *mine == *theirs);
            } else {
                return mine == theirs;
            }
        },
        data_);
}

} // namespace headless
