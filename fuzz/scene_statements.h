#pragma once

#include <random>
#include <string>

namespace fuzz {

/// A statement of a Maya ASCII file, with names and values of so few that what one makes another meets.
std::string scene_statement(std::minstd_rand& random);

} // namespace fuzz
