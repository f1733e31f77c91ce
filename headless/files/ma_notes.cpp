#include "headless/files/ma_notes.h"

#include "headless/session.h"

#include <algorithm>
#include <vector>

namespace headless {

// "12 nodes (polyCube 9, tweak 3)", the most frequent first and no more than a line holds.
std::string MaNotes::listed(const Counts& counts, const char* what) {
    static constexpr std::size_t most = 8;
    std::vector<std::pair<std::int64_t, std::string>> sorted;
    std::int64_t sum = 0;
    for (const auto& [type, count] : counts) {
        sorted.emplace_back(-count, type);
        sum += count;
    }
    std::ranges::sort(sorted);
    std::string out = std::to_string(sum) + " " + what + (sum == 1 ? " (" : "s (");
    for (std::size_t i = 0; i < std::min(sorted.size(), most); ++i)
        out += (i > 0 ? ", " : "") + sorted[i].second + " " + std::to_string(-sorted[i].first);
    if (sorted.size() > most) out += ", " + std::to_string(sorted.size() - most) + " more types";
    return out + ")";
}

void MaNotes::tell(const std::string& path) const {
    std::string unknown;
    if (!unknown_nodes_.empty()) unknown = listed(unknown_nodes_, "node");
    if (!unknown_attributes_.empty())
        unknown += (unknown.empty() ? "" : ", ") + listed(unknown_attributes_, "attribute");
    Session& session = Session::current();
    if (!unknown.empty()) session.warning(path + ": kept without being understood: " + unknown);
    if (passed_over_ == 0) return;
    const std::int64_t others = passed_over_ - 1;
    const std::string more = others == 0 ? "" : " (and " + std::to_string(others) + " more passed over)";
    session.warning(first_.text() + more);
}

} // namespace headless
