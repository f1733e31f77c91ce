#pragma once

/// Where the files are looked for that a scene refers to, for the verbs that open scenes.

#include "tools/vor2/cli/syntax.h"

namespace headless {
struct FileSearch;
}

namespace tool {

class SearchOptions {
public:
    void describe(Syntax& syntax);
    /// `--allow-missing-references`, for a verb that refuses a scene whose references aren't all there.
    void describe_missing(Syntax& syntax);
    /// What is wrong, or nothing.
    std::string check() const;
    headless::FileSearch search(bool missing_is_refused) const;

private:
    std::string project_;
    std::vector<std::string> maps_;
    bool allow_missing_ = false;
};

} // namespace tool
