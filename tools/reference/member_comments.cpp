#include "tools/reference/member_comments.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <vector>

namespace reference {
namespace {

/// The names that a line declares: `f32 red = 0, green{1};` has two.
std::vector<std::string> declared_names(std::string declaration) {
    static const std::regex initialiser(R"(\{[^}]*\}|=[^,;]*|<[^;]*>)");
    static const std::regex name(R"((\w+)\s*[,;])");
    declaration = std::regex_replace(declaration, initialiser, "");
    std::vector<std::string> names;
    for (std::sregex_iterator it(declaration.begin(), declaration.end(), name), end; it != end; ++it)
        names.push_back((*it)[1]);
    return names;
}

using Comments = std::map<std::pair<std::string, std::string>, std::string>;

void read_header(const std::filesystem::path& path, Comments& comments) {
    static const std::regex class_head(R"(^(?:class|struct) (\w+)[^;]*$)");
    static const std::regex commented(R"(^(.*?)///< (.*)$)");
    std::ifstream file(path);
    std::string class_name, line, declaration;
    std::vector<std::string> names;
    while (std::getline(file, line)) {
        std::smatch match;
        if (std::regex_match(line, match, class_head)) class_name = match[1];
        if (!std::regex_match(line, match, commented)) {
            names.clear();
            line.ends_with(';') ? declaration.clear() : void(declaration += line);
            continue;
        }
        const std::string before = match[1];
        const bool goes_on = before.find_first_not_of(' ') == std::string::npos;
        if (!goes_on) names = declared_names(declaration + before);
        declaration.clear();
        for (const std::string& name : names) {
            std::string& comment = comments[{class_name, name}];
            comment += (comment.empty() ? "" : " ") + match[2].str();
        }
    }
}

} // namespace

Comments member_comments(const std::string& folder) {
    Comments comments;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".h") read_header(entry.path(), comments);
    }
    return comments;
}

} // namespace reference
