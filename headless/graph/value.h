#pragma once

#include "headless/graph/math.h"

#include <memory>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace headless {

/// Words of a value that is kept without being understood, as the file gave them.
struct RawTokens {
    std::string type; ///< what the file called it ("polyFaces"); empty for bare words
    std::vector<std::string> tokens;
    bool operator==(const RawTokens&) const = default;
};

/// What a plug holds. Lengths are centimetres, angles radians, times seconds, whatever units the scene shows.
/// Scalars, triples and short texts are held in place; the rest is shared and never changed, so a copy is cheap.
class Value {
public:
    using Doubles = std::vector<double>;
    using Integers = std::vector<std::int64_t>;
    using Texts = std::vector<std::string>;
    template<typename T>
    using Shared = std::shared_ptr<const T>;

    Value() = default;
    Value(bool v) : data_(v) {}
    Value(int v) : data_(static_cast<std::int64_t>(v)) {}
    Value(std::int64_t v) : data_(v) {}
    Value(double v) : data_(v) {}
    Value(const Vector3& v) : data_(v) {}
    Value(std::string v) : data_(std::move(v)) {}
    Value(const char* v) : data_(std::string(v)) {}
    Value(const Matrix& v) : data_(std::make_shared<const Matrix>(v)) {}
    Value(Doubles v) : data_(std::make_shared<const Doubles>(std::move(v))) {}
    Value(Integers v) : data_(std::make_shared<const Integers>(std::move(v))) {}
    Value(Texts v) : data_(std::make_shared<const Texts>(std::move(v))) {}
    Value(RawTokens v) : data_(std::make_shared<const RawTokens>(std::move(v))) {}

    bool empty() const { return std::holds_alternative<std::monostate>(data_); }
    bool is_number() const { return data_.index() >= 1 && data_.index() <= 3; }
    /// What is inside, or null when it is something else.
    template<typename T>
    const T* get_if() const;

    /// Any scalar as a number: true is 1. Of a triple the x; of anything else 0.
    double number() const;
    std::int64_t integer() const; ///< rounded toward zero, clamped to what fits; not a number is 0
    bool boolean() const { return number() != 0.0; }
    /// A triple; a lone number stands in all three places; anything else is zero.
    Vector3 vector() const;
    const Matrix& matrix() const;    ///< the identity when this holds no matrix
    const std::string& text() const; ///< empty when this holds no text

    bool operator==(const Value& other) const;

private:
    std::variant<std::monostate, bool, std::int64_t, double, Vector3, std::string, Shared<Matrix>, Shared<Doubles>,
                 Shared<Integers>, Shared<Texts>, Shared<RawTokens>>
        data_;
};

template<typename T>
const T* Value::get_if() const {
    if constexpr (std::is_same_v<T, Matrix> || std::is_same_v<T, Doubles> || std::is_same_v<T, Integers> ||
                  std::is_same_v<T, Texts> || std::is_same_v<T, RawTokens>) {
        const auto* shared = std::get_if<Shared<T>>(&data_);
        return shared ? shared->get() : nullptr;
    } else {
        return std::get_if<T>(&data_);
    }
}

} // namespace headless
