#pragma once

/// Values that glTF has no word for, as `extras`.

#include "convert/gltf/tiny_gltf.h"
#include "format/vor2.h"

namespace vor2::convert {

tinygltf::Value value_of(const VOR2_LOADER::TEXT& text);
/// Adds a member to a value that is an object or nothing yet.
void put(tinygltf::Value& object, const std::string& key, tinygltf::Value value);

/// Adds `properties`: an object with a member for each. A constant is a number, an integer, a list of numbers or of
/// texts; a track with several keys is an object with `times` and `values`.
void put_properties(tinygltf::Value& object, const VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties);
/// Reads them back. What isn't of that shape is left out.
void read_properties(const tinygltf::Value& object, VOR2_LOADER::VOR2_EXTENDED_PROPERTIES& properties);

/// The numbers of a list; empty when it is none of just so many.
std::vector<double> numbers_of(const tinygltf::Value& list, std::size_t count);

} // namespace vor2::convert
