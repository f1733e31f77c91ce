#pragma once

/// Scene files of other formats as verbs read them, with problems told to the user.

#include "convert/scene_builder.h"

#include <string>

namespace tool {

/// The name's ending with its dot, in lower case.
std::string extension_of(const std::string& name);
bool is_gltf(const std::string& extension);
/// Whether `read_foreign` knows files of that ending.
bool is_foreign(const std::string& extension);
/// The endings that it knows, as a sentence lists them.
std::string foreign_extensions();

/// Whether files of that ending are read by a library that a bad one may bring down.
bool wants_process(const std::string& extension);

/// Notes about it go to the user as notes about `file`. `pictures` is how the names of pictures begin that lie in the
/// file. False, told to the user, when it can't be read.
bool read_foreign(const std::string& file, const std::string& pictures, vor2::convert::ImportedFile& out);

/// Tells how a conversion went. False when nothing came of it.
bool tell(const std::string& file, const vor2::convert::Report& report);

} // namespace tool
