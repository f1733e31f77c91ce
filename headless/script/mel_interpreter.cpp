#include "headless/script/interpreter.h"
#include "headless/script/mel_frame.h"
#include "headless/script/python.h"

namespace headless {
namespace {

// Keeps what scripts leave behind, and the scripts themselves: an import sends the same few lines at every key.
class MelInterpreter {
public:
    explicit MelInterpreter(std::shared_ptr<ScriptWork> work) : world_{std::move(work)} {}

    Result<CommandResult> run(Session& session, const std::string& text) {
        const Result<std::shared_ptr<const MelProgram>> program = program_of(text);
        if (!program) return program.error();
        for (const auto& procedure : (*program)->procedures) world_.procedures[procedure->name] = procedure;
        return MelFrame(world_, &session, **program).run();
    }

private:
    Result<std::shared_ptr<const MelProgram>> program_of(const std::string& text) {
        static constexpr std::size_t longest = 512, most = 256;
        if (const auto at = programs_.find(text); at != programs_.end()) return at->second;
        Result<std::shared_ptr<const MelProgram>> program = parse_mel(text);
        if (!program || text.size() > longest) return program;
        if (programs_.size() == most) programs_.clear();
        programs_[text] = *program;
        return program;
    }

    NameMap<std::shared_ptr<const MelProgram>> programs_;
    MelWorld world_;
};

} // namespace

void install_interpreters(Session& session) {
    const auto work = std::make_shared<ScriptWork>();
    const auto mel = std::make_shared<MelInterpreter>(work);
    session.set_mel([mel](Session& host, const std::string& text) { return mel->run(host, text); });
    const auto python = std::make_shared<PythonInterpreter>(work);
    session.set_python([python](Session& host, const std::string& text) { return python->run(host, text); });
}

} // namespace headless
