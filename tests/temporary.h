#pragma once

#include <filesystem>
#include <random>
#include <string>

/// The folder for temporary files as a script line takes it: with slashes on every system, and one at the end.
inline std::string temporary_folder() {
    const std::string folder = std::filesystem::temp_directory_path().generic_string();
    return folder.ends_with('/') ? folder : folder + "/";
}

/// A name in it that no other run of a test has, at the same time or later.
inline std::string temporary_name(const std::string& name) {
    static std::random_device random;
    return temporary_folder() + name + std::to_string(random());
}
