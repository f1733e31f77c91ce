#pragma once

#include "tools/vor2/cli/syntax.h"

#include <string>
#include <vector>

namespace tool {

/// Where the outputs of a verb go that turns each of its inputs into a file: `--output` for a single input, or
/// `--output-dir` for any number of them, under the inputs' own names.
class OutputNames {
public:
    /// `extension` with its dot.
    explicit OutputNames(std::string extension) : extension_(std::move(extension)) {}

    void describe(Syntax& syntax);
    /// What is wrong with the options for these inputs, or nothing.
    std::string check(const std::vector<std::string>& inputs) const;
    const std::string& folder() const { return folder_; }
    std::string name_for(const std::string& input) const;

private:
    std::string extension_, output_, folder_;
};

} // namespace tool
