#include "tools/vor2/cli/output_names.h"

#include "support/platform/native_path.h"
#include "support/text/ascii.h"

#include <filesystem>
#include <map>

namespace fs = std::filesystem;

namespace tool {

using VOR2_LOADER::platform::native_path;

void OutputNames::describe(Syntax& syntax) {
    syntax.file("-o,--output", "OUT" + extension_, "the file to write", output_);
    syntax.folder(
        "-d,--output-dir", "DIR",
        "write a file for each input into this folder, under the input's name; it is made where it isn't there",
        folder_);
}

std::string OutputNames::check(const std::vector<std::string>& inputs) const {
    if (output_.empty() == folder_.empty()) return "one of --output and --output-dir is needed";
    if (!output_.empty()) {
        if (inputs.size() > 1) return "--output is for one input; --output-dir takes many";
        const std::string ending = VOR2_LOADER::lowered(native_path(output_).extension().string());
        return ending == extension_ ? "" : "--output: '" + output_ + "' doesn't end in " + extension_;
    }
    std::map<std::string, std::string> inputs_by_output;
    for (const std::string& input : inputs) {
        const auto [entry, is_new] = inputs_by_output.emplace(name_for(input), input);
        if (!is_new) return "'" + entry->second + "' and '" + input + "' would both be written to " + entry->first;
    }
    return {};
}

std::string OutputNames::name_for(const std::string& input) const {
    return output_.empty() ? (native_path(folder_) / native_path(input).stem()).string() + extension_ : output_;
}

} // namespace tool
