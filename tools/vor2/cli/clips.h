#pragma once

/// Ranges of frames with names, each of which becomes a file.

#include "headless/session.h"

#include <string>
#include <vector>

namespace tool {

struct Clip {
    std::string name; ///< as part of a file's name, too
    double start = 0, stop = 0;
};

/// "walk:1-24". Gives what is wrong with it, or nothing.
std::string parse_clip(const std::string& text, std::vector<Clip>& out);
/// A JSON file with a list of objects with `name`, `start` and `stop`, or an object with a list of two frames for each
/// name. False, told to the user, when it can't be read.
bool read_clips(const std::string& file, std::vector<Clip>& out);
/// The clips that game exporter nodes of a scene list.
std::vector<Clip> clips_of_scene(headless::Session& session);
/// What is wrong with a list of clips, or nothing: a name twice or none, a range that ends before it begins.
std::string problem_with(const std::vector<Clip>& clips);

} // namespace tool
