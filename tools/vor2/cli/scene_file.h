#pragma once

/// Scene files as the tool opens and saves them, with problems told to the user.

#include "format/vor2.h"

#include <string>

namespace tool {

/// A native name in the library's form: a unit a byte, backslashes as separators. The library turns it back into
/// the very same bytes, and finds a scene's references beside it.
VOR2_LOADER::TEXT library_name(const std::string& native_name);

/// Loads without moving the clock. False, told to the user, when that fails.
bool load_scene(VOR2_LOADER::VOR2& scene, const std::string& name);
bool load_scene(VOR2_LOADER::VOR2& scene, const std::string& name, VOR2_LOADER::VOR2_INPUT_BUFFER& buffer);

/// Lets the references whose file wasn't there be names alone, so that a save of the scene makes no empty file for
/// them; each is told to the user as a warning about `name`, the file that the scene was loaded from.
void leave_out_missing_references(VOR2_LOADER::VOR2& scene, const std::string& name);

/// Writes the scene as a file of an `OutputSet` that is alive. False, told to the user, when that fails.
bool write_scene(const VOR2_LOADER::VOR2& scene, const std::string& name);

/// Saves the scene, and with it those it refers to, whole or not at all. False, told to the user, when that fails. A
/// referenced scene is saved within the folder of `name`, unless `allow_outside`, and over nothing that is no scene.
bool save_scene(const VOR2_LOADER::VOR2& scene, const std::string& name, bool allow_outside);

} // namespace tool
