#include "headless/graph/result.h"

namespace headless {

std::string Error::text() const {
    std::string out = file;
    if (line > 0) out += (out.empty() ? "line " : ":") + std::to_string(line);
    if (line > 0 && column > 0) out += ":" + std::to_string(column);
    return out.empty() ? message : out + ": " + message;
}

} // namespace headless
