#pragma once

/// The check of a scene before it is saved: UVW coordinates and vertex normals that are infinite or no
/// number, as lines of text, and their repair.

#include "format/scene/root.h"

namespace VOR2_LOADER {

/// Brings a position of the file into the space that the user works in.
using POSITION_CONVERTER = VECTOR_3 (*)(VECTOR_3 position);

/// (x, z, y). A caller that passes it declares the scene to be in 3dsMax space, and the report says so.
[[nodiscard]] VECTOR_3 swap_y_z(VECTOR_3 position);

/// Checks the rigid, morph, weighted and animated meshes of the root, then of the scene of each element
/// of `xrefs_15` in turn.
///
/// - `problems` is emptied and receives, for each root with problems, its export record, a line for each
///   bad mapping channel and each vertex with a bad normal, and a blank block. Empty means clean.
/// - `fix_problems` replaces all three components of a bad UVW entry by random numbers from 0 to 1, and a
///   bad normal by a random unit one, from the C runtime's `rand` (15 bits of it), which nothing seeds.
/// - `report_file`, unless null, is written with the problems and a NUL where there are any: its folder
///   is made, a read-only mark is taken off it, and what it held is replaced. One that can't be written
///   changes nothing else. A clean scene touches no file.
/// - `open_report` starts the system's "notepad" on the file.
///
/// Only as many channels of a vertex are looked at as both it and its mesh have. A mesh whose
/// `matrix_index` names no node tells positions as they are stored.
void check_scene(VOR2& root, NARROW_TEXT& problems, bool fix_problems, const NARROW_TEXT* report_file, bool open_report,
                 POSITION_CONVERTER convert_position);

} // namespace VOR2_LOADER
