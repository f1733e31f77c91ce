#pragma once

#include "headless/script/mel_frame.h"

namespace headless {

/// What an expression node runs, taken apart once and run at each step of time. In its text ".I[3]" is an input,
/// ".O[0]" an output, `time` the seconds and `frame` the frames of the clock; "$variables" begin anew each time.
/// Only what follows from inputs and clock alone is run.
class Expression {
public:
    explicit Expression(const std::string& text);
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;

    /// Why it can't be run; empty where it can.
    const std::string& shortfall() const { return shortfall_; }
    /// The indices of the inputs that it reads.
    const std::vector<int>& inputs() const { return inputs_; }
    /// Whether each run sets that output, whatever the inputs.
    bool always_gives(int output) const;
    bool loops() const { return loops_; }

    /// Gives the outputs by index, 0 for those that it never sets; `inputs` are in the order of `inputs()`. An error
    /// where the text divides by zero or takes too much work.
    Result<std::vector<double>> run(double time, double frame, std::span<const double> inputs);
    /// Whether a run took too much work; another will.
    bool exhausted() const { return world_.work->exhausted(); }

private:
    std::shared_ptr<const MelProgram> program_;
    std::string shortfall_;
    std::vector<int> inputs_, outputs_;
    std::vector<bool> given_; // by output, whether each run sets it
    bool loops_ = false;
    MelWorld world_;
};

} // namespace headless
