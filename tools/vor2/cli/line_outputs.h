#pragma once

/// Output files of script lines: each appears whole, under its own name, at the moment that it is closed, so that the
/// next command of the same line can read it. One that couldn't be written whole leaves what was there.

#include "support/platform/hooks.h"

#include <map>
#include <string>

namespace tool {

class LineOutputs : private VOR2_LOADER::platform::OUTPUT_REDIRECTION {
public:
    LineOutputs();
    ~LineOutputs() override;
    LineOutputs(const LineOutputs&) = delete;
    LineOutputs& operator=(const LineOutputs&) = delete;

    /// Files that couldn't be put into place; each has been told to the user.
    std::size_t failures() const { return failures_; }

private:
    std::optional<std::string> redirect(const std::string& native_name) override;
    void closed(const std::string& native_name, bool whole) override;

    std::map<std::string, std::string> scratch_of_; ///< open files, by the name they were asked for
    std::size_t failures_ = 0;
    VOR2_LOADER::platform::OUTPUT_REDIRECTION* outer_;
};

} // namespace tool
