#include "tools/vor2/cli/output_set.h"

#include "support/platform/native_path.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/system.h"

#include <algorithm>

namespace fs = std::filesystem;

namespace tool {

using VOR2_LOADER::platform::flush_to_disk;
using VOR2_LOADER::platform::native_path;
namespace {

constexpr std::size_t most_files = 4096;

} // namespace

fs::path real_place(const std::string& name) {
    std::error_code error;
    fs::path place = fs::absolute(native_path(name), error);
    for (int links = 0; links < 40 && fs::is_symlink(fs::symlink_status(place, error)); ++links) {
        const fs::path next = fs::read_symlink(place, error);
        if (error) break;
        place = next.is_absolute() ? next : place.parent_path() / next;
    }
    const fs::path folder = fs::weakly_canonical(place.parent_path(), error);
    return error ? place.lexically_normal() : folder / place.filename();
}

std::string why_not_a_target(const fs::path& target) {
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (fs::is_directory(status)) return "is a folder";
    if (fs::exists(status) && !fs::is_regular_file(status)) return "is no regular file";
    if (target.filename().empty()) return "is no name of a file";
    const fs::path folder = target.parent_path();
    const fs::file_status folder_status = fs::status(folder, error);
    if (!fs::exists(folder_status)) return "the folder " + folder.string() + " doesn't exist";
    if (!fs::is_directory(folder_status)) return folder.string() + " is no folder";
    if (!may_write_in(folder.string())) return "the folder " + folder.string() + " can't be written to";
    return {};
}

void make_output_folder(const std::string& folder) {
    std::error_code ignored;
    if (!folder.empty()) fs::create_directories(native_path(folder), ignored);
}

OutputSet::OutputSet(const std::string& target, OutputRules rules)
    : named_target_(target), target_(real_place(target)), folder_(target_.parent_path()), rules_(rules),
      outer_(VOR2_LOADER::platform::output_redirection) {
    VOR2_LOADER::platform::output_redirection = this;
}

OutputSet::~OutputSet() {
    VOR2_LOADER::platform::output_redirection = outer_;
    remove_scratch_files();
    if (committed_) return;
    std::error_code ignored;
    for (auto folder = made_folders_.rbegin(); folder != made_folders_.rend(); ++folder) fs::remove(*folder, ignored);
}

bool OutputSet::ready() {
    if (named_target_.empty()) {
        refuse("output", "no name is given");
        return false;
    }
    const std::string why =
        !native_path(named_target_).has_filename() ? "is no name of a file" : why_not_a_target(target_);
    if (!why.empty()) refuse(named_target_, why);
    return why.empty();
}

std::optional<std::string> OutputSet::redirect(const std::string& native_name) {
    const fs::path place = real_place(native_name);
    const bool outermost = place == target_;
    if (!outermost && !lies_inside(place)) {
        return refuse(named_target_,
                      "would save " + native_name + " outside its own folder (--allow-outside permits it)");
    }
    for (const File& file : files_) {
        if (file.target == place) {
            // The outermost file is written once, first of all; who comes back to it is a scene within it.
            if (outermost) return refuse(named_target_, "would save a scene that it refers to over itself");
            return file.scratch;
        }
    }
    if (files_.size() >= most_files) return refuse(named_target_, "refers to more files than are saved in one go");
    const std::string why = why_not_a_target(place);
    if (!why.empty()) return refuse(native_name, why);
    if (!outermost && rules_.may_give_way != nullptr && !rules_.may_give_way(place.string()))
        return refuse(named_target_, "would save a scene over " + native_name + ", which is none");
    const std::string scratch = scratch_for(place);
    if (scratch.empty()) return std::nullopt;
    files_.push_back({place, scratch});
    return scratch;
}

bool OutputSet::may_create_directory(const std::string& native_name) {
    const fs::path place = real_place(native_name);
    std::error_code ignored;
    if (fs::exists(place, ignored)) return true;
    if (!lies_inside(place)) {
        refuse(named_target_, "would make the folder " + native_name + " outside its own (--allow-outside permits it)");
        return false;
    }
    made_folders_.push_back(place);
    return true;
}

std::optional<std::string> OutputSet::refuse(const std::string& file, const std::string& why) {
    if (!refused_) problem(file, why);
    refused_ = true;
    return std::nullopt;
}

std::string OutputSet::scratch_for(const fs::path& target) {
    int error = 0;
    std::string scratch = make_scratch_file(target.parent_path().string(), error);
    if (scratch.empty()) refuse(target.string(), error_text(error));
    return scratch;
}

bool OutputSet::lies_inside(const fs::path& place) const {
    if (rules_.allow_outside) return true;
    const auto [end, rest] = std::mismatch(folder_.begin(), folder_.end(), place.begin(), place.end());
    return end == folder_.end() && rest != place.end();
}

std::vector<OutputSet::File>::iterator OutputSet::outermost_behind_others() {
    return std::stable_partition(files_.begin(), files_.end(),
                                 [this](const File& file) { return file.target != target_; });
}

bool OutputSet::commit() {
    if (refused_) return false;
    if (outermost_behind_others() == files_.end()) return refuse(named_target_, "nothing was written").has_value();
    return put_in_place(files_.end());
}

bool OutputSet::commit_others() {
    return !refused_ && put_in_place(outermost_behind_others());
}

bool OutputSet::put_in_place(std::vector<File>::iterator end) {
    for (auto file = files_.begin(); file != end; ++file) {
        const int error = flush_to_disk(file->scratch);
        if (error != 0) return refuse(file->target.string(), error_text(error)).has_value();
    }
    for (auto file = files_.begin(); file != end; ++file) {
        std::error_code error;
        fs::rename(native_path(file->scratch), file->target, error);
        if (error)
            return refuse(file->target.string(), error_text(error.default_error_condition().value())).has_value();
        keep_if_interrupted(file->scratch);
        file->scratch.clear();
    }
    flush_to_disk(folder_.string());
    committed_ = true;
    return true;
}

void OutputSet::remove_scratch_files() {
    std::error_code ignored;
    for (const File& file : files_) {
        if (file.scratch.empty()) continue;
        fs::remove(native_path(file.scratch), ignored);
        keep_if_interrupted(file.scratch);
    }
}

} // namespace tool
