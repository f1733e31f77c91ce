#pragma once

/// Output files that appear whole or not at all. Each is written under a scratch name beside its target; `commit`
/// flushes all of them to the disk and renames them, the outermost last. What isn't committed is removed.
///
/// While one is alive it stands between the library and the files that it opens for writing, so that the scenes
/// which a scene refers to, and which the library saves with it, keep the same promise. A file that would land
/// outside the folder of the outermost output is refused, unless that is allowed. "Outside" is judged by where
/// folders and links really lead.
///
/// Names of referenced scenes come out of files, maybe a stranger's: with `may_give_way` no such name costs the user
/// another file of his.

#include "support/platform/hooks.h"

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tool {

/// Where a name leads once all folders and links on its way are followed, whether or not anything stands there.
std::filesystem::path real_place(const std::string& name);
/// Why no file can be written at that place; nothing when one can.
std::string why_not_a_target(const std::filesystem::path& target);

/// Makes the folder that outputs are to go to, unless it is there. Where it can't be made, each output tells why.
void make_output_folder(const std::string& folder);

struct OutputRules {
    bool allow_outside = false;
    /// Whether a scene beside the outermost output may take the place of the file of that name; without it, of any.
    bool (*may_give_way)(const std::string& name) = nullptr;
};

class OutputSet : private VOR2_LOADER::platform::OUTPUT_REDIRECTION {
public:
    /// `target` is the outermost output as the user named it.
    explicit OutputSet(const std::string& target, OutputRules rules = {});
    ~OutputSet() override;
    OutputSet(const OutputSet&) = delete;
    OutputSet& operator=(const OutputSet&) = delete;

    /// Whether the target can be written: its folder is there, and it is no folder or device itself. Tells the user
    /// when it can't.
    bool ready();
    /// Puts all files into place. False, told to the user, when one couldn't be, or when the outermost was never
    /// written; others may then be in place, the outermost never.
    bool commit();
    /// The same for the files beside the outermost, when that one is left unwritten on purpose.
    bool commit_others();
    /// Whether a file was refused; its reason has been told to the user.
    bool refused() const { return refused_; }

private:
    struct File {
        std::filesystem::path target;
        std::string scratch;
    };

    std::optional<std::string> redirect(const std::string& native_name) override;
    bool may_create_directory(const std::string& native_name) override;
    std::optional<std::string> refuse(const std::string& file, const std::string& why);
    std::string scratch_for(const std::filesystem::path& target);
    bool lies_inside(const std::filesystem::path& place) const;
    std::vector<File>::iterator outermost_behind_others();
    bool put_in_place(std::vector<File>::iterator end);
    void remove_scratch_files();

    std::string named_target_;
    std::filesystem::path target_; ///< where links lead
    std::filesystem::path folder_;
    OutputRules rules_;
    bool refused_ = false;
    bool committed_ = false;
    std::vector<File> files_; ///< in order of their first opening
    std::vector<std::filesystem::path> made_folders_;
    VOR2_LOADER::platform::OUTPUT_REDIRECTION* outer_ = nullptr;
};

} // namespace tool
