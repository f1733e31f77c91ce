#pragma once

#include "headless/graph/result.h"
#include "headless/session.h"

#include <maya/MPxFileTranslator.h>

#include <string>

namespace headless {

std::string forward_slashes(std::string path);

/// What a translator is doing now; `kUnknownAccessMode` when none is at work.
MPxFileTranslator::FileAccessMode current_access_mode();

/// Has a plug-in's translator read a file into the scene. An empty type picks the one that takes the file.
Result<void> read_through_translator(Session& session, const std::string& path, const std::string& type,
                                     MPxFileTranslator::FileAccessMode mode);
/// Has it write the file; a name without an extension gets the translator's own.
Result<void> write_through_translator(Session& session, const std::string& path, const std::string& type,
                                      MPxFileTranslator::FileAccessMode mode);
/// The type of the translator that takes the file for its own; empty when none does.
std::string identify(Session& session, const std::string& path);

} // namespace headless
