#pragma once

/// The page: one HTML file that needs no other and no network.
///
/// Nothing that a scene holds can run in it. Scenes stand in elements that are no scripts, their texts without "<"
/// and their arrays as base64; and by its own policy the page runs one script, known by its hash, and fetches nothing.

#include "viewer/page/scene_pack.h"

#include <string>

namespace vor2::viewer {

/// A browser holds no longer text than some 500 MB; base64 makes four letters of three bytes.
inline constexpr u64 most_words = 90'000'000;

struct PageScenes {
    const ScenePack& first;
    const ScenePack* compared = nullptr; ///< the scene drawn over it
    std::string title;
};

std::string page_of(const PageScenes& scenes);

} // namespace vor2::viewer
