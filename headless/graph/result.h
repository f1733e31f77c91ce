#pragma once

#include <string>
#include <utility>
#include <variant>

namespace headless {

/// Why something was refused, in words for the user; where a file is to blame, the place in it.
struct Error {
    std::string message{};
    std::string file{};
    int line = 0; ///< counted from 1; 0 where there is no place
    int column = 0;

    /// "FILE:LINE:COLUMN: message", with the parts that are known.
    std::string text() const;
};

/// A value, or the error that stands in its place.
template<typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : state_(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const { return state_.index() == 0; }
    T& operator*() { return *std::get_if<0>(&state_); }
    const T& operator*() const { return *std::get_if<0>(&state_); }
    T* operator->() { return std::get_if<0>(&state_); }
    const T* operator->() const { return std::get_if<0>(&state_); }
    const Error& error() const { return *std::get_if<1>(&state_); }

private:
    std::variant<T, Error> state_;
};

/// Done, or the error that kept it from being done. `return {};` says done.
template<>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : failed_(true), error_(std::move(error)) {}

    explicit operator bool() const { return !failed_; }
    const Error& error() const { return error_; }

private:
    bool failed_ = false;
    Error error_;
};

} // namespace headless
