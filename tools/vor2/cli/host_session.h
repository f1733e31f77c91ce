#pragma once

/// The embedded host as the tool uses it: with the readers of scene files, the scripts' interpreters and the plug-in.

#include "headless/files/bvh_reader.h"
#include "headless/session.h"
#include "tools/vor2/cli/syntax.h"

#include <optional>
#include <string>
#include <vector>

namespace tool {

/// What stands for the clock and the account, so that a run can be repeated to the byte.
class RepeatOptions {
public:
    void describe(Syntax& syntax);
    /// Looks at SOURCE_DATE_EPOCH too, which --timestamp overrides. What is wrong with it, or nothing.
    std::string check() const;
    void apply() const;

private:
    std::string timestamp_, user_;
};

/// There is one host in a process. What it says is told to the user while this object lives: warnings as notes about
/// the file that is worked on, errors as problems with it, information and results not at all or on standard output.
/// Of the errors of one step (a command, the lines of a script, the opening of a scene) the first is told, the cause;
/// and none where a problem with an output file was told already.
class HostSession {
public:
    enum class Talk { problems, everything };
    explicit HostSession(std::string file, Talk talk = Talk::problems);
    ~HostSession();
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;

    headless::Session& session() { return session_; }
    /// False, told to the user, when the scene can't be opened.
    bool open(const std::string& scene, const headless::BvhOptions& capture = {});
    /// False, told to the user, when the host knows no such unit.
    bool set_time_unit(const std::string& unit);
    /// Runs a command of the plug-in. Gives why it failed, or the first error that was shown meanwhile; empty when all
    /// went well. This one isn't told; `tell_error` does that.
    std::string try_command(const std::string& command, const std::vector<std::string>& arguments);
    /// The same, told to the user. False when there was an error.
    bool run(const std::string& command, const std::vector<std::string>& arguments);
    /// Tells the user the last step's first error. False when there was one.
    bool tell_error();
    /// False, told to the user, when the scene can't be saved there.
    bool save_as(const std::string& path);
    /// Runs lines of a script, and shows what they give. False as above.
    bool run_script(const std::string& text, bool python);
    /// What is worked on from here on: what problems name.
    void work_on(std::string file) { file_ = std::move(file); }
    bool is_equipped() const { return is_equipped_; }
    /// What was told as notes about the file so far.
    const std::vector<std::string>& warnings() const { return warnings_; }

private:
    void begin_step();
    void note_error(const headless::Error& error);
    void note_error(const std::string& text);
    void take_message(headless::MessageKind kind, const std::string& text);

    headless::Session& session_;
    std::string file_;
    Talk talk_;
    std::string first_error_; ///< of the present step
    std::size_t told_before_ = 0;
    std::vector<std::string> warnings_;
    bool is_equipped_ = false;
};

/// Loads the plug-in and the interpreters into a session. False, told to the user, when the plug-in won't start.
bool equip(headless::Session& session);

} // namespace tool
