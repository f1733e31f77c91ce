#pragma once

/// A first look without a screen: the skeleton of a scene, at the time its clock stands at, in characters.

#include "format/vor2.h"

#include <string>

namespace vor2::viewer {

struct TextView {
    int columns = 80, rows = 30;
    bool dots = true;   ///< eight dots a character, as Braille letters; else ASCII
    double turn = 0.42; ///< radians to the right of the body's front, from where it is seen
};

/// Lines of at most that many columns and rows, each with its end. Without bones, what nodes and meshes there are is
/// drawn as points.
std::string skeleton_text(const VOR2_LOADER::VOR2& scene, const TextView& view);

} // namespace vor2::viewer
