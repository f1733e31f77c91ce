#pragma once

#include "headless/graph/scene.h"

#include <string>
#include <string_view>

namespace headless {

struct MaReadOptions {
    std::string name_space; ///< that the file's nodes go into; empty for the root namespace
};

/// Files within files that references may open.
inline constexpr int max_reference_depth = 32;
/// The most files that one scene refers to, directly and through others, a file as often as it is named.
inline constexpr int max_references = 1024;

/// Reads a Maya ASCII file into a scene, in time linear in its length. Values come in the file's own units. A scene
/// that held nothing of its own takes over the file's units, playback range, current time and the values of default
/// nodes; another keeps what it has. A name that is taken is counted on, and the file's own lines go on meaning the
/// node that it made.
///
/// Types and attributes that the host doesn't know are kept as values, without a word. A list of values that is told
/// in blocks goes on with the type that its first block states. A line that can't be followed (an unknown command, a
/// name that isn't there or takes too long to find, a value that doesn't fit) is passed over; one warning tells the
/// first such place and how many there were. Referenced `.ma` files are read too, by their path or beside the file; one
/// that is missing, refers back to a file that is being read, lies too deep, or comes after too many others is a
/// warning.
///
/// Errors: a file that can't be read, one without a statement, and text that isn't of the form (line and column).
/// After an error the nodes that the file had made are gone again.
Result<void> read_maya_ascii(Scene& scene, const std::string& path, const MaReadOptions& options = {});
/// The same from text; `path` is for messages and for finding references.
Result<void> read_maya_ascii_text(Scene& scene, std::string_view text, const std::string& path,
                                  const MaReadOptions& options = {});

} // namespace headless
