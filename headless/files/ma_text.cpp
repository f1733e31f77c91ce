#include "headless/files/ma_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace headless {
namespace {

constexpr std::size_t line_length = 100;
constexpr std::size_t string_piece = 1000;
constexpr std::size_t buffer_size = std::size_t{1} << 18;

struct Digits {
    char text[32];
    std::size_t length = 0;

    explicit Digits(double value) {
        // Whole numbers without an exponent: an attribute of counts takes no other.
        const bool whole =
            std::abs(value) < 1e15 && value == std::trunc(value) && !(value == 0.0 && std::signbit(value));
        const auto [end, problem] = whole ? std::to_chars(text, text + sizeof text, static_cast<std::int64_t>(value))
                                          : std::to_chars(text, text + sizeof text, value);
        length = static_cast<std::size_t>(end - text);
    }
    std::string_view view() const { return {text, length}; }
};

} // namespace

double FileUnits::to_file(AttributeKind kind, double value) const {
    switch (kind) {
    case AttributeKind::distance:
        return value / centimetres;
    case AttributeKind::angle:
        return value / radians;
    case AttributeKind::time:
        return value * per_second;
    default:
        return value;
    }
}

double FileUnits::from_file(AttributeKind kind, double value) const {
    switch (kind) {
    case AttributeKind::distance:
        return value * centimetres;
    case AttributeKind::angle:
        return value * radians;
    case AttributeKind::time:
        return value / per_second;
    default:
        return value;
    }
}

MaText& MaText::text(std::string_view words) {
    if (buffer_.size() >= buffer_size) flush();
    buffer_ += words;
    if (words.ends_with('\n')) line_start_ = buffer_.size();
    return *this;
}

MaText& MaText::integer(std::int64_t value) {
    char digits[24];
    const auto [end, problem] = std::to_chars(digits, digits + sizeof digits, value);
    return text({digits, static_cast<std::size_t>(end - digits)});
}

namespace {

// Conversion rounds, so that more than one number of the file's unit may read back to the value, or the nearest may
// not: the neighbours are tried too, and the shortest that reads back is taken.
Digits shortest(const FileUnits& units, AttributeKind kind, double value) {
    const double nearest = units.to_file(kind, value);
    constexpr double infinity = std::numeric_limits<double>::infinity();
    Digits best(nearest);
    bool exact = units.from_file(kind, nearest) == value;
    if (nearest == value || (exact && best.length < 16)) return best;
    for (const double other : {std::nextafter(nearest, -infinity), std::nextafter(nearest, infinity)}) {
        if (units.from_file(kind, other) != value) continue;
        const Digits digits(other);
        if (!exact || digits.length < best.length) best = digits;
        exact = true;
    }
    return best;
}

} // namespace

MaText& MaText::number(double value, AttributeKind kind) {
    no_number_ |= !std::isfinite(value);
    return text(shortest(units_, kind, value).view());
}

std::string MaText::spelled(double value, AttributeKind kind) const {
    return std::string(shortest(units_, kind, value).view());
}

MaText& MaText::quoted(std::string_view value) {
    if (value.size() <= string_piece) {
        escaped(value);
        return *this;
    }
    text("(\n\t\t");
    while (!value.empty()) {
        std::size_t length = std::min(value.size(), string_piece);
        // Characters of several bytes stay whole.
        while (length < value.size() && (static_cast<unsigned char>(value[length]) & 0xC0) == 0x80) ++length;
        escaped(value.substr(0, length));
        value.remove_prefix(length);
        text(value.empty() ? ")" : "\n\t\t+ ");
    }
    return *this;
}

void MaText::escaped(std::string_view value) {
    text("\"");
    for (const char c : value) {
        switch (c) {
        case '"':
            buffer_ += "\\\"";
            break;
        case '\\':
            buffer_ += "\\\\";
            break;
        case '\n':
            buffer_ += "\\n";
            break;
        case '\t':
            buffer_ += "\\t";
            break;
        case '\r':
            buffer_ += "\\r";
            break;
        default:
            buffer_ += c;
        }
    }
    text("\"");
}

MaText& MaText::gap() {
    if (buffer_.size() - line_start_ < line_length) return text(" ");
    text("\n");
    return text("\t\t");
}

void MaText::flush() {
    out_.write(buffer_);
    buffer_.clear();
    line_start_ = 0;
}

} // namespace headless
