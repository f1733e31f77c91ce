#pragma once

#include <map>
#include <string>
#include <utility>

namespace reference {

/// The comments that stand beside members (`///<`) in all headers of a folder, by class and member.
std::map<std::pair<std::string, std::string>, std::string> member_comments(const std::string& folder);

} // namespace reference
