#pragma once

#include "headless/files/ma_text.h"

namespace headless {

/// Writes `addAttr` and `setAttr` lines for all that a node has of its own: dynamic attributes, stored values (those
/// of neighbouring elements of an array as one range), marks. Keys of curves go by `write_keys`. The plug whose value
/// no file can hold (an infinity, a NaN) is the error.
Result<void> write_attributes(MaText& out, const Node& node);

/// Whether `write_attributes` has anything to write.
bool has_attributes_of_its_own(const Node& node);

/// The path of a plug as files have it (".tx", ".tg[0].ttx"): by short names, without the compounds that it needn't
/// name.
std::string file_path(const Plug& plug);

/// The keys of an animation curve with their tangents; nothing for another node.
Result<void> write_keys(MaText& out, const Node& node);

/// The points, edges, faces, UVs and colours of a mesh; nothing for another node.
Result<void> write_mesh(MaText& out, const Node& node);

} // namespace headless
