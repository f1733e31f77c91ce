#pragma once

#include <string>
#include <vector>

namespace vor2::convert {

/// How a conversion went. A note tells what the other format can't say, in a sentence without a full stop.
struct Report {
    std::string problem;        ///< why nothing came of it; empty when all went well
    bool lacks_texture = false; ///< the problem is a texture that isn't there or can't be read
    std::vector<std::string> notes;

    [[nodiscard]] bool good() const { return problem.empty(); }
    bool fail(std::string why) {
        if (problem.empty()) problem = std::move(why);
        return false;
    }
    void note(std::string text) { notes.push_back(std::move(text)); }
};

} // namespace vor2::convert
