// format_reference write SOURCES: writes docs/format.md and docs/vor2.ksy below the folder of the sources, from the
// tables of the library's records, the page docs/format.in.md and the file docs/arm.vr2.
// format_reference check SOURCES: says whether the two are what it would write.

#include "tools/reference/anatomy.h"
#include "tools/reference/kaitai.h"
#include "tools/reference/markdown.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

using namespace reference;

std::string read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(path.string() + " can't be read");
    return {std::istreambuf_iterator<char>(file), {}};
}

bool check(const std::filesystem::path& path, const std::string& text) {
    const std::string there = std::filesystem::exists(path) ? read(path) : "";
    if (there == text) return true;
    const auto [a, b] = std::mismatch(there.begin(), there.end(), text.begin(), text.end());
    const auto line = std::count(there.begin(), a, '\n') + 1;
    (void)std::fprintf(stderr, "%s:%td: isn't what the library's tables say; build the target `reference`\n",
                       path.string().c_str(), line);
    return false;
}

bool write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (file.flush()) return true;
    throw std::runtime_error(path.string() + " can't be written");
}

} // namespace

int main(int argument_count, char** arguments) {
    const std::string mode = argument_count == 3 ? arguments[1] : "";
    if (mode != "write" && mode != "check") {
        (void)std::fputs("usage: format_reference write|check SOURCES\n", stderr);
        return 2;
    }
    try {
        const std::filesystem::path sources = arguments[2], docs = sources / "docs";
        const Shapes shapes = collect_shapes((sources / "format").string());
        const std::string example = read(docs / "arm.vr2");
        const std::string anatomy = take_apart(shapes, {reinterpret_cast<const u8*>(example.data()), example.size()});
        const auto put = mode == "write" ? write : check;
        const bool page = put(docs / "format.md", fill_page(shapes, read(docs / "format.in.md"), anatomy));
        const bool kaitai = put(docs / "vor2.ksy", write_kaitai(shapes));
        return page && kaitai ? 0 : 1;
    } catch (const std::exception& problem) {
        (void)std::fprintf(stderr, "format_reference: %s\n", problem.what());
        return 1;
    }
}
