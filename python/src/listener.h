#pragma once

/// What the tool's parts have to say, as errors and warnings of Python.

#include "python/src/records.h"
#include "tools/vor2/cli/messages.h"

namespace vor2::python {

class Listener final : public tool::MessageListener {
public:
    explicit Listener(std::FILE* printed = stdout) : MessageListener(printed) {}
    void take_problem(const std::string& line) override { problems_.push_back(line); }
    void take_note(const std::string& line) override { notes_.push_back(line); }
    bool has_problems() const { return !problems_.empty(); }

    /// Tells the notes as warnings and, with `failed` or a problem, raises the first problem; all of them are its
    /// `lines`. For who holds the interpreter's lock.
    void tell(bool failed) const;

private:
    std::vector<std::string> problems_, notes_;
};

} // namespace vor2::python
