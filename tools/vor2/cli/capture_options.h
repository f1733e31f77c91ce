#pragma once

/// What a motion capture file doesn't say of itself, for the verbs that open scenes.

#include "headless/files/bvh_reader.h"
#include "tools/vor2/cli/syntax.h"

namespace tool {

class CaptureOptions {
public:
    void describe(Syntax& syntax);
    /// What is wrong, or nothing.
    std::string check() const;
    headless::BvhOptions options() const { return {unit_.value_or(1.0), up_ == "z"}; }

private:
    std::optional<double> unit_;
    std::string up_ = "y";
};

} // namespace tool
