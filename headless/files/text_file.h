#pragma once

#include "headless/graph/result.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace headless {

inline constexpr std::size_t longest_text_file = 0x7FFFFFFF;

/// All bytes of a regular file of no more than `longest_text_file`. A missing file and whatever can't be read are
/// errors that say which.
Result<std::string> read_text_file(const std::string& path);

/// A file that appears whole or not at all: what is written goes into a file beside the target, which takes the
/// target's name at `commit`, once it is on the disk; without one it is gone again, and what stood at the target is as
/// it was. A target that is a device or a pipe is written straight into.
class OutputFile {
public:
    /// An error says why nothing can be written there.
    static Result<OutputFile> open(const std::string& path);
    OutputFile(OutputFile&&) = default;
    OutputFile& operator=(OutputFile&&) = delete;
    ~OutputFile();

    /// Appends; a failure is kept for `commit`.
    void write(std::string_view bytes);
    Result<void> commit();

private:
    OutputFile() = default;

    struct Close {
        void operator()(std::FILE* file) const { (void)std::fclose(file); }
    };
    std::string path_, target_, beside_; ///< as asked for; with links followed; empty for a device
    std::unique_ptr<std::FILE, Close> file_;
    int problem_ = 0;
};

} // namespace headless
