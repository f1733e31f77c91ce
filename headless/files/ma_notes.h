#pragma once

#include "headless/graph/result.h"

#include <cstdint>
#include <map>
#include <string>

namespace headless {

/// What a reader of a file passes over, gathered so that a file costs a line or two of warnings however much it is.
class MaNotes {
public:
    void unknown_node(const std::string& type) { ++unknown_nodes_[type]; }
    void unknown_attribute(const std::string& node_type) { ++unknown_attributes_[node_type]; }
    /// Counts a line that couldn't be followed. The first is told, and its place costs a walk over the text, so it is
    /// asked for the first alone: `where` gives an `Error`.
    template<class Where>
    void passed_over(const Where& where) {
        if (passed_over_++ == 0) first_ = where();
    }
    /// Puts the warnings into words: what is kept without being known, and what was passed over.
    void tell(const std::string& path) const;

private:
    using Counts = std::map<std::string, std::int64_t>;
    static std::string listed(const Counts& counts, const char* what);

    Counts unknown_nodes_, unknown_attributes_;
    Error first_;
    std::int64_t passed_over_ = 0;
};

} // namespace headless
