#pragma once

#include "headless/files/file_search.h"
#include "headless/graph/scene.h"

#include <string>
#include <string_view>

namespace headless {

struct MaReadOptions {
    std::string name_space{}; ///< that the file's nodes go into; empty for the root namespace
    FileSearch search{};      ///< where what it refers to is looked for
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
/// first such place and how many there were.
///
/// Files that are referred to become part of the scene, in their namespaces, with the changes that the file makes to
/// them: values, attributes, parents, connections through the place holders of its reference nodes. A change to what
/// isn't there is passed over in silence. The reference nodes of these files are gone then, and with them the places
/// where children of theirs were kept meanwhile.
///
/// A file that isn't to be loaded, or isn't found, or isn't Maya ASCII, stays a reference: its node keeps its changes
/// and the connections to it, and `Scene::references` the statement. One that isn't found, refers back to a file that
/// is being read, lies too deep, comes after too many others or has changes that can't be read is a warning, or the
/// error of the whole where `search` says so.
///
/// Errors: a file that can't be read, one without a statement, and text that isn't of the form (line and column).
/// After an error the nodes that the file had made are gone again.
Result<void> read_maya_ascii(Scene& scene, const std::string& path, const MaReadOptions& options = {});
/// The same from text; `path` is for messages and for finding references.
Result<void> read_maya_ascii_text(Scene& scene, std::string_view text, const std::string& path,
                                  const MaReadOptions& options = {});

} // namespace headless
