#pragma once

namespace headless {

class Session;

/// Gives a session the readers and writers of scene files that come with the host.
void register_file_formats(Session& session);

} // namespace headless
