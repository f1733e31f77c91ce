#pragma once

/// Who answers when an export finds problems in its scene and asks whether to go on.

#include "support/platform/hooks.h"
#include "tools/vor2/cli/syntax.h"

#include <string>

namespace tool {

/// `--on-problems cancel|force`. Without it a user at a terminal is asked, and where there is none the export is
/// cancelled.
class ProblemsOption {
public:
    void describe(Syntax& syntax);
    const std::string& answer() const { return answer_; }

private:
    std::string answer_; ///< empty where it wasn't given
};

/// Answers for one export while it lives.
class ProblemsDialog {
public:
    /// The option's answer, the scene as the user named it and the file that it is exported to.
    ProblemsDialog(const ProblemsOption& option, std::string scene, const std::string& output);
    ~ProblemsDialog();
    ProblemsDialog(const ProblemsDialog&) = delete;
    ProblemsDialog& operator=(const ProblemsDialog&) = delete;

    bool cancelled() const { return was_asked_ && answer_ == VOR2_LOADER::platform::ANSWER::YES; }
    /// Tells the user what became of the export, where it was asked: a problem or a note.
    void tell() const;

private:
    static VOR2_LOADER::platform::ANSWER answer(const char* words, const char* caption);

    std::string choice_, scene_, report_;
    bool was_asked_ = false;
    VOR2_LOADER::platform::ANSWER answer_ = VOR2_LOADER::platform::ANSWER::YES;
};

} // namespace tool
