#pragma once

#include "headless/session.h"

namespace headless {

/// What a script may cost, with all scripts that run within it, so that none keeps the host busy or fills the memory
/// without end. One unit is a step of the script, or a handful of bytes that it makes or goes over.
class ScriptWork {
public:
    /// While one lasts a script runs; the outermost starts anew.
    class Run {
    public:
        explicit Run(ScriptWork& work) : work_(work) {
            if (work_.runs_++ == 0) work_.spent_ = 0;
        }
        ~Run() { --work_.runs_; }
        Run(const Run&) = delete;
        Run& operator=(const Run&) = delete;

    private:
        ScriptWork& work_;
    };

    ScriptWork() = default;
    explicit ScriptWork(std::size_t most) : most_(most) {}

    static constexpr const char* refusal = "The script takes too much time or memory";

    // False once it is too much.
    bool add(std::size_t units) { return (spent_ += units) <= most_.value_or(most_units); }
    bool step() { return add(1); }
    bool exhausted() const { return spent_ > most_.value_or(most_units); }
    /// A value that is kept, or made of others.
    bool make(const CommandResult& value) { return make(bytes_of(value)); }
    bool make(std::size_t bytes) { return add(1 + bytes / 10); }
    /// A value that is passed on and soon gone again.
    bool pass(const CommandResult& value) { return add(1 + bytes_of(value) / 4096); }

    /// Where nothing else was said. Of made bytes, a gigabyte. An import that a script asks for sends some lines a key,
    /// and is to come through.
    static inline std::size_t most_units = 100'000'000;

private:
    static std::size_t bytes_of(const CommandResult& value) {
        std::size_t bytes = value.numbers.size() * sizeof(double) + value.integers.size() * sizeof(std::int64_t);
        for (const std::string& text : value.texts) bytes += sizeof(std::string) + text.size();
        return bytes;
    }

    std::optional<std::size_t> most_;
    std::size_t spent_ = 0;
    int runs_ = 0;
};

} // namespace headless
