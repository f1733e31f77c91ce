#pragma once

#include "headless/graph/result.h"

#include <string>
#include <string_view>

namespace headless {

/// All bytes of a file. A missing file, a folder and a file that can't be read are errors that say which.
Result<std::string> read_text_file(const std::string& path);

/// Makes a file hold these bytes, whole or not at all: they go into a file beside it, which then takes its name.
/// On an error what stood at `path` is as it was, and nothing is left behind.
Result<void> write_text_file(const std::string& path, std::string_view bytes);

} // namespace headless
