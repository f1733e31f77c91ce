#pragma once

/// Single named values among the extended properties, for what the format has no field.

#include "format/vor2.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace vor2::convert {

/// A text of a scene as well-formed UTF-8, whatever it holds.
std::string utf8_of(const VOR2_LOADER::TEXT& text);
VOR2_LOADER::TEXT text_of(std::string_view utf8);

std::optional<double> float_property(const VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties, std::string_view name);
std::optional<int> int_property(const VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties, std::string_view name);
std::optional<std::string> string_property(const VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties,
                                           std::string_view name);
void add_float(VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties, std::string_view name, double value);
void add_int(VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties, std::string_view name, int value);
void add_string(VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties, std::string_view name, std::string_view value);

/// Takes away the floats of that name.
void drop_property(VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties, std::string_view name);

/// A track that holds one value.
VOR2_LOADER::OWNED<VOR2_LOADER::VOR2_ANIMATABLE_FLOAT32> constant(double value);
VOR2_LOADER::OWNED<VOR2_LOADER::VOR2_ANIMATABLE_INT32> constant(int value);
VOR2_LOADER::OWNED<VOR2_LOADER::VOR2_ANIMATABLE_COLOUR> constant(const std::array<double, 3>& colour);

} // namespace vor2::convert
