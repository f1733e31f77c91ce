#pragma once

/// A verb of the tool. Each has a file of its own; `verbs.cpp` is the table of them.

#include "tools/vor2/cli/syntax.h"

#include <memory>

namespace tool {

/// What the process ends with.
enum ExitCode : int { exit_done = 0, exit_refused = 1, exit_usage = 2 };

class Verb {
public:
    Verb() = default;
    virtual ~Verb() = default;
    Verb(const Verb&) = delete;
    Verb& operator=(const Verb&) = delete;

    virtual std::string_view name() const = 0;
    /// One line, without a full stop.
    virtual std::string_view summary() const = 0;
    /// What a user has to know beyond the options; paragraphs stand apart by an empty line.
    virtual std::string_view description() const = 0;
    /// Lines to copy: "vor2 info walk.vr2".
    virtual std::vector<std::string> examples() const = 0;
    /// Adds its rows, bound to its members. Called once, before `run`.
    virtual void describe(Syntax& syntax) = 0;
    /// What is wrong with the options taken together; nothing when they fit.
    virtual std::string check() const { return {}; }
    /// Does the work; gives the exit code.
    virtual int run() = 0;
};

using VerbList = std::vector<std::unique_ptr<Verb>>;

/// All verbs, in the order that the help lists them.
VerbList make_verbs();

std::unique_ptr<Verb> make_export_verb();
std::unique_ptr<Verb> make_import_verb();
std::unique_ptr<Verb> make_host_verb();
std::unique_ptr<Verb> make_info_verb();
std::unique_ptr<Verb> make_dump_verb();
std::unique_ptr<Verb> make_upgrade_verb();
std::unique_ptr<Verb> make_diff_verb();
std::unique_ptr<Verb> make_pose_verb();
std::unique_ptr<Verb> make_check_verb();
std::unique_ptr<Verb> make_view_verb();
std::unique_ptr<Verb> make_convert_verb();
std::unique_ptr<Verb> make_plot_verb();
std::unique_ptr<Verb> make_optimise_verb();

} // namespace tool
