#include "tools/vor2/cli/line_outputs.h"

#include "support/platform/native_path.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/system.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace tool {

using VOR2_LOADER::platform::flush_to_disk;
using VOR2_LOADER::platform::native_path;

LineOutputs::LineOutputs() : outer_(VOR2_LOADER::platform::output_redirection) {
    VOR2_LOADER::platform::output_redirection = this;
}

LineOutputs::~LineOutputs() {
    VOR2_LOADER::platform::output_redirection = outer_;
    for (const auto& [name, scratch] : scratch_of_) {
        std::error_code ignored;
        fs::remove(native_path(scratch), ignored);
        keep_if_interrupted(scratch);
    }
}

std::optional<std::string> LineOutputs::redirect(const std::string& native_name) {
    const fs::path target = real_place(native_name);
    std::string why = why_not_a_target(target);
    if (why.empty() && !scratch_of_.contains(native_name)) {
        int error = 0;
        std::string scratch = make_scratch_file(target.parent_path().string(), error);
        if (!scratch.empty()) return scratch_of_[native_name] = std::move(scratch);
        why = error_text(error);
    }
    ++failures_;
    problem(native_name, why.empty() ? "is being written already" : why);
    return std::nullopt;
}

void LineOutputs::closed(const std::string& native_name, bool whole) {
    const auto file = scratch_of_.find(native_name);
    if (file == scratch_of_.end()) return;
    const std::string scratch = file->second;
    scratch_of_.erase(file);
    int error = whole ? flush_to_disk(scratch) : 0;
    std::error_code renamed;
    if (whole && error == 0) {
        fs::rename(native_path(scratch), real_place(native_name), renamed);
        error = renamed.default_error_condition().value();
    }
    if (!whole || error != 0) fs::remove(native_path(scratch), renamed);
    keep_if_interrupted(scratch);
    if (error == 0) return;
    ++failures_;
    problem(native_name, error_text(error));
}

} // namespace tool
