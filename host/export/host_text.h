#pragma once

#include "support/text/text_helpers.h"

#include <maya/MString.h>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Between the host's 8-bit texts and the library's: each byte is one code unit.
[[nodiscard]] inline TEXT to_text(const MString& text) {
    return widen(std::string_view(text.asChar()));
}
[[nodiscard]] inline MString to_host_text(const TEXT& text) {
    return MString(narrow(text.view()).c_str());
}

} // namespace VOR2_EXPORTER_MAYA
