#include "convert/properties.h"

#include "format/tracks/constant_track.h"
#include "support/text/unicode.h"

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;

template<class LIST>
auto named(const LIST& list, std::string_view name) -> decltype(list.begin()) {
    const TEXT wanted = text_of(name);
    auto it = list.begin();
    while (it != list.end() && !(it->name == wanted)) ++it;
    return it;
}

} // namespace

std::string utf8_of(const TEXT& text) {
    std::string utf8 = to_readable_utf8(text.view());
    // A surrogate without its partner comes as three bytes ED A0..BF xx, which no reader of UTF-8 takes.
    for (std::size_t at = 0; (at = utf8.find('\xED', at)) != std::string::npos; at += 3) {
        if (static_cast<unsigned char>(utf8[at + 1]) >= 0xA0) utf8.replace(at, 3, "\uFFFD");
    }
    return utf8;
}

TEXT text_of(std::string_view utf8) {
    TEXT text;
    for (const char16_t unit : to_utf16(utf8)) text.append(unit);
    return text;
}

std::optional<double> float_property(const VOR2_EXTENDED_PROPERTIES& properties, std::string_view name) {
    const auto found = named(properties.float_properties, name);
    if (found == properties.float_properties.end() || !found->track) return {};
    return found->track->value();
}

std::optional<int> int_property(const VOR2_EXTENDED_PROPERTIES& properties, std::string_view name) {
    const auto found = named(properties.int_properties, name);
    if (found == properties.int_properties.end() || !found->track) return {};
    return found->track->value();
}

std::optional<std::string> string_property(const VOR2_EXTENDED_PROPERTIES& properties, std::string_view name) {
    const auto found = named(properties.string_arrays, name);
    if (found == properties.string_arrays.end() || found->strings.empty()) return {};
    return utf8_of(found->strings[0]);
}

void add_float(VOR2_EXTENDED_PROPERTIES& properties, std::string_view name, double value) {
    auto& property = properties.float_properties.emplace_back();
    property.name = text_of(name);
    property.track = constant(value);
}

void add_int(VOR2_EXTENDED_PROPERTIES& properties, std::string_view name, int value) {
    auto& property = properties.int_properties.emplace_back();
    property.name = text_of(name);
    property.track = constant(value);
}

void add_string(VOR2_EXTENDED_PROPERTIES& properties, std::string_view name, std::string_view value) {
    auto& property = properties.string_arrays.emplace_back();
    property.name = text_of(name);
    property.strings.push_back(text_of(value));
}

void drop_property(VOR2_EXTENDED_PROPERTIES& properties, std::string_view name) {
    const TEXT unwanted = text_of(name);
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_FLOAT32>> kept;
    for (auto& property : properties.float_properties) {
        if (!(property.name == unwanted)) kept.push_back(std::move(property));
    }
    properties.float_properties = std::move(kept);
}

OWNED<VOR2_ANIMATABLE_FLOAT32> constant(double value) {
    return constant_track<VOR2_ANIMATABLE_FLOAT32_LINEAR>(static_cast<f32>(value));
}

OWNED<VOR2_ANIMATABLE_INT32> constant(int value) {
    return constant_track<VOR2_ANIMATABLE_INT32_RLE>(value);
}

OWNED<VOR2_ANIMATABLE_COLOUR> constant(const std::array<double, 3>& colour) {
    return constant_track<VOR2_ANIMATABLE_COLOUR_LINEAR>(
        VOR2_COLOUR(static_cast<f32>(colour[0]), static_cast<f32>(colour[1]), static_cast<f32>(colour[2]), 1.0F));
}

} // namespace vor2::convert
