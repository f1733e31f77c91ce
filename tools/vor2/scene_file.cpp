#include "tools/vor2/scene_file.h"

#include "support/text/unicode.h"
#include "tools/vor2/messages.h"
#include "tools/vor2/output_set.h"
#include "tools/vor2/system.h"

#include <filesystem>

namespace tool {

using namespace VOR2_LOADER;

TEXT library_name(const std::string& native_name) {
    TEXT name;
    name.reserve(native_name.size() + 1);
    for (const char c : native_name)
        name.append(c == '/' ? u'\\' : static_cast<char16_t>(static_cast<unsigned char>(c)));
    return name;
}

std::string readable(const TEXT& text) {
    std::string utf8 = to_readable_utf8(text.view());
    // A surrogate without its partner comes as three bytes ED A0..BF xx, which no reader of UTF-8 takes.
    for (std::size_t at = 0; (at = utf8.find('\xED', at)) != std::string::npos; at += 3) {
        if (static_cast<unsigned char>(utf8[at + 1]) >= 0xA0) utf8.replace(at, 3, "\uFFFD");
    }
    return utf8;
}

std::string why_unreadable(const std::string& name) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(name, ignored);
    if (std::filesystem::is_directory(status)) return "is a folder";
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) return "is no regular file";
    return {};
}

bool load_scene(VOR2& scene, const std::string& name, VOR2_INPUT_BUFFER& buffer) {
    if (scene.load(buffer, false)) return true;
    std::string why = why_unreadable(name);
    if (why.empty()) why = buffer.problem();
    problem(name, why.empty() ? "can't be read as a scene" : why);
    return false;
}

bool load_scene(VOR2& scene, const std::string& name) {
    VOR2_INPUT_BUFFER buffer(library_name(name));
    return load_scene(scene, name, buffer);
}

bool save_scene(const VOR2& scene, const std::string& name, bool allow_outside) {
    OutputSet outputs(name, allow_outside);
    if (!outputs.ready()) return false;
    VOR2_WRITE_STREAM stream;
    bool saved = stream.open(library_name(name), false, true) && scene.save(stream);
    saved = stream.close() && saved;
    if (saved && !outputs.refused()) return outputs.commit();
    if (!outputs.refused()) {
        const i32 error = stream.file().last_error();
        problem(name, "couldn't be saved" + (error > 0 ? ": " + error_text(error) : std::string()));
    }
    return false;
}

} // namespace tool
