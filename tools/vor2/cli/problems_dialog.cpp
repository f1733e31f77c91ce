#include "tools/vor2/cli/problems_dialog.h"

#include "host/export/scene_finishing.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/system.h"

namespace tool {

namespace platform = VOR2_LOADER::platform;

namespace {

ProblemsDialog* present = nullptr;

} // namespace

void ProblemsOption::describe(Syntax& syntax) {
    syntax.choice("--on-problems", {"cancel", "force"},
                  "what becomes of an export whose meshes hold numbers that aren't finite: nothing is written but the "
                  "report, or the file with such numbers replaced and a mark (default: ask at a terminal, else cancel)",
                  answer_);
}

ProblemsDialog::ProblemsDialog(const ProblemsOption& option, std::string scene, const std::string& output)
    : choice_(option.answer()), scene_(std::move(scene)),
      report_(VOR2_EXPORTER_MAYA::report_file_name(output.c_str()).asChar()) {
    present = this;
    platform::ask_yes_no_hook = answer;
}

ProblemsDialog::~ProblemsDialog() {
    platform::ask_yes_no_hook = nullptr;
    present = nullptr;
}

platform::ANSWER ProblemsDialog::answer(const char* words, const char* caption) {
    // The question is whether to cancel.
    ProblemsDialog& self = *present;
    self.was_asked_ = true;
    if (self.choice_.empty() && input_is_terminal()) {
        const Progress::Pause pause;
        platform::ask_yes_no_hook = nullptr;
        self.answer_ = platform::ask_yes_no(nullptr, words, caption);
        platform::ask_yes_no_hook = answer;
    } else {
        self.answer_ = self.choice_ == "force" ? platform::ANSWER::NO : platform::ANSWER::YES;
    }
    return self.answer_;
}

void ProblemsDialog::tell() const {
    if (cancelled()) {
        problem(scene_, "the export is cancelled: problems were found, see " + report_ +
                            " (--on-problems force exports all the same)");
    } else if (was_asked_) {
        note(scene_, "warning: exported in spite of problems, see " + report_);
    }
}

} // namespace tool
