#pragma once

/// A scene as a page holds it: a JSON text for its structure and a block of words for its arrays. The reading side,
/// with what each member means, is `viewer/src/scene/document.ts`.

#include "format/vor2.h"
#include "viewer/page/word_block.h"

#include <string>
#include <vector>

namespace vor2::viewer {

struct ScenePack {
    std::string json; ///< with no "<" in it, so that nothing in a scene can end the element that it stands in
    std::vector<u32> words;
    std::vector<std::string> notes; ///< for the user: what isn't in the page, and why
};

/// `file` is how the page calls the scene, `file_name` its name in the library's form, beside which pictures are looked
/// for, `bytes` the file itself.
ScenePack pack_scene(const std::string& file, const VOR2_LOADER::TEXT& file_name, const VOR2_LOADER::VOR2& scene,
                     std::span<const u8> bytes);

} // namespace vor2::viewer
