#include "tools/vor2/cli/system.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <random>
#include <thread>

namespace tool {

unsigned processor_count() {
    return std::max(1U, std::thread::hardware_concurrency());
}

std::string error_text(int error) {
    std::string text = std::strerror(error); // NOLINT(concurrency-mt-unsafe)
    if (text.size() > 1 && text[0] >= 'A' && text[0] <= 'Z' && text[1] >= 'a') text[0] += 'a' - 'A';
    return text;
}

std::string make_scratch_file(const std::string& folder, int& error) {
    static std::random_device chance;
    for (int attempt = 0; attempt < 64; ++attempt) {
        char name[32];
        (void)std::snprintf(name, sizeof name, "/.vor2-%08x.tmp", chance());
        std::string path = (folder.empty() ? std::string(".") : folder) + name;
        error = make_watched_file(path);
        if (error == 0) return path;
        if (error != EEXIST) break;
    }
    return {};
}

} // namespace tool
