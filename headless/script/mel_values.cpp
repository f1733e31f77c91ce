#include "headless/script/mel_values.h"

#include "headless/graph/number_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace headless {
namespace {

using ResultKind = CommandResult::Kind;

double leading_number(std::string_view text) {
    double out = 0.0;
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n"), text.size()));
    text = without_plus(text);
    // "nancy" and "infant" begin with words that would read as numbers.
    const std::size_t sign = text.starts_with('-') ? 1 : 0;
    if (text.find_first_of("0123456789.", sign) != sign) return 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), out);
    return error == std::errc() ? out : 0.0;
}

bool whole(const CommandResult& value) {
    return !value.integers.empty() && value.texts.empty() && value.numbers.empty();
}

} // namespace

double mel_number(const CommandResult& value) {
    if (!value.numbers.empty()) return value.numbers.front();
    if (!value.integers.empty()) return static_cast<double>(value.integers.front());
    return value.texts.empty() ? 0.0 : leading_number(value.texts.front());
}

std::int64_t mel_integer(const CommandResult& value) {
    return whole(value) ? value.integers.front() : Value(mel_number(value)).integer();
}

std::string mel_text(const CommandResult& value) {
    return value.text();
}

bool mel_is_text(const CommandResult& value) {
    return value.kind == ResultKind::text || value.kind == ResultKind::texts;
}

bool mel_is_list(const CommandResult& value) {
    return value.kind == ResultKind::texts || value.kind == ResultKind::numbers || value.kind == ResultKind::integers;
}

bool mel_truth(const CommandResult& value) {
    if (value.kind == ResultKind::text) return !value.texts.front().empty() && value.texts.front() != "0";
    return mel_number(value) != 0.0;
}

std::size_t mel_size(const CommandResult& value) {
    if (mel_is_list(value)) return value.texts.size() + value.numbers.size() + value.integers.size();
    return value.kind == ResultKind::text ? value.texts.front().size() : 1;
}

CommandResult mel_element(const CommandResult& list, std::size_t i) {
    if (!mel_is_list(list)) return i == 0 ? list : CommandResult();
    if (i < list.texts.size()) return text_result(list.texts[i]);
    if (i < list.numbers.size()) return number_result(list.numbers[i]);
    if (i < list.integers.size()) return integer_result(list.integers[i]);
    return {};
}

namespace {

template<typename T>
bool compare(std::string_view op, const T& a, const T& b) {
    if (op == "==") return a == b;
    if (op == "!=") return a != b;
    if (op == "<") return a < b;
    if (op == ">") return a > b;
    return op == "<=" ? a <= b : a >= b;
}

std::optional<CommandResult> of_integers(std::string_view op, std::int64_t a, std::int64_t b) {
    // Overflow wraps, as it does in the host.
    const auto ua = static_cast<std::uint64_t>(a), ub = static_cast<std::uint64_t>(b);
    if (op == "+") return integer_result(static_cast<std::int64_t>(ua + ub));
    if (op == "-") return integer_result(static_cast<std::int64_t>(ua - ub));
    if (op == "*") return integer_result(static_cast<std::int64_t>(ua * ub));
    if (b == 0) return {};
    if (b == -1) return integer_result(op == "%" ? 0 : static_cast<std::int64_t>(0 - ua));
    return integer_result(op == "%" ? a % b : a / b);
}

std::optional<CommandResult> of_numbers(std::string_view op, double a, double b) {
    if (op == "+") return number_result(a + b);
    if (op == "-") return number_result(a - b);
    if (op == "*") return number_result(a * b);
    if (b == 0.0) return {};
    return number_result(op == "%" ? std::fmod(a, b) : a / b);
}

} // namespace

std::optional<CommandResult> mel_binary(std::string_view op, const CommandResult& a, const CommandResult& b) {
    const bool comparison = op == "==" || op == "!=" || op[0] == '<' || op[0] == '>';
    if (mel_is_text(a) || mel_is_text(b)) {
        if (comparison) return integer_result(compare(op, mel_text(a), mel_text(b)));
        if (op == "+") return text_result(mel_text(a) + mel_text(b));
    }
    if (comparison) return integer_result(compare(op, mel_number(a), mel_number(b)));
    if (whole(a) && whole(b)) return of_integers(op, a.integers.front(), b.integers.front());
    return of_numbers(op, mel_number(a), mel_number(b));
}

CommandResult mel_list(const std::vector<CommandResult>& values) {
    CommandResult out;
    const bool texts = std::ranges::any_of(values, mel_is_text);
    const bool numbers = !texts && std::ranges::any_of(values, [](const CommandResult& v) { return !whole(v); });
    out.kind = texts ? ResultKind::texts : numbers ? ResultKind::numbers : ResultKind::integers;
    for (const CommandResult& value : values) {
        for (std::size_t i = 0, count = mel_is_list(value) ? mel_size(value) : 1; i < count; ++i) {
            const CommandResult one = mel_element(value, i);
            if (texts)
                out.texts.push_back(mel_text(one));
            else if (numbers)
                out.numbers.push_back(mel_number(one));
            else
                out.integers.push_back(mel_integer(one));
        }
    }
    return out;
}

CommandResult mel_converted(CommandResult value, std::string_view type) {
    if (type.starts_with("global ")) type.remove_prefix(7);
    const bool list = type.ends_with("[]");
    if (list) type.remove_suffix(2);
    if (!list) {
        if (type == "string") return text_result(mel_text(value));
        if (type == "int") return integer_result(mel_integer(value));
        return type == "float" ? number_result(mel_number(value)) : std::move(value);
    }
    CommandResult out;
    out.kind = type == "string" ? ResultKind::texts : type == "int" ? ResultKind::integers : ResultKind::numbers;
    if (value.kind == ResultKind::none) return out;
    for (std::size_t i = 0, count = mel_is_list(value) ? mel_size(value) : 1; i < count; ++i) {
        const CommandResult one = mel_element(value, i);
        if (type == "string")
            out.texts.push_back(mel_text(one));
        else if (type == "int")
            out.integers.push_back(mel_integer(one));
        else
            out.numbers.push_back(mel_number(one));
    }
    return out;
}

} // namespace headless
