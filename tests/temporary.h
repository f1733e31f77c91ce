#pragma once

#include <filesystem>
#include <string>

/// The folder for temporary files as a script line takes it: with slashes on every system, and one at the end.
inline std::string temporary_folder() {
    const std::string folder = std::filesystem::temp_directory_path().generic_string();
    return folder.ends_with('/') ? folder : folder + "/";
}
