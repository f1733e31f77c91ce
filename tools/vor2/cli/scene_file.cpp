#include "tools/vor2/cli/scene_file.h"

#include "support/platform/native_path.h"
#include "support/platform/platform.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/system.h"

#include <cerrno>

namespace tool {

using namespace VOR2_LOADER;

TEXT library_name(const std::string& native_name) {
    TEXT name;
    name.reserve(native_name.size() + 1);
    for (const char c : native_name)
        name.append(c == '/' ? u'\\' : static_cast<char16_t>(static_cast<unsigned char>(c)));
    return name;
}

namespace {

void leave_out_missing(VOR2& scene, const TEXT& file, const std::string& name);

/// `file` is where the references are, `name` what the user calls the file that it all began with.
template<class REFERENCES>
void leave_out_missing_of(REFERENCES& references, const TEXT& file, const std::string& name) {
    for (auto& reference : references) {
        if (!reference || !reference->scene) continue;
        const TEXT path = resolve_path(file, reference->file_name);
        if (file_exists(path)) {
            leave_out_missing(*reference->scene, path, name);
        } else {
            note(name, "warning: there is no scene " + platform::native_file_name(path) + ", which it refers to");
            reference->scene.reset();
        }
    }
}

/// Whether a scene may be saved over what stands at that name: nothing, an empty file, a scene, or one whose save
/// didn't finish.
bool may_give_way_to_a_scene(const std::string& name) {
    READ_FILE file;
    if (!file.open(library_name(name))) return file.last_error() == ENOENT;
    u32 word = 0;
    return file.read(&word, sizeof word) == 0 || word == MAGIC_WORD || word == 0;
}

// No deeper than the library follows references.
void leave_out_missing(VOR2& scene, const TEXT& file, const std::string& name) { // NOLINT(misc-no-recursion)
    leave_out_missing_of(scene.xrefs_15, file, name);
    leave_out_missing_of(scene.xrefs_20, file, name);
}

} // namespace

bool load_scene(VOR2& scene, const std::string& name, VOR2_INPUT_BUFFER& buffer) {
    if (scene.load(buffer, false)) return true;
    std::string why = platform::why_unreadable(name);
    if (why.empty()) why = buffer.problem();
    problem(name, why.empty() ? "can't be read as a scene" : why);
    return false;
}

bool load_scene(VOR2& scene, const std::string& name) {
    VOR2_INPUT_BUFFER buffer(library_name(name));
    return load_scene(scene, name, buffer);
}

void leave_out_missing_references(VOR2& scene, const std::string& name) {
    leave_out_missing(scene, library_name(name), name);
}

bool write_scene(const VOR2& scene, const std::string& name) {
    const std::size_t told_before = problems_told();
    VOR2_WRITE_STREAM stream;
    bool saved = stream.open(library_name(name), false, true) && scene.save(stream);
    saved = stream.close() && saved;
    if (saved || problems_told() > told_before) return saved;
    const i32 error = stream.file().last_error();
    problem(name, "couldn't be saved" + (error > 0 ? ": " + error_text(error) : std::string()));
    return false;
}

bool save_scene(const VOR2& scene, const std::string& name, bool allow_outside) {
    OutputSet outputs(name, {allow_outside, may_give_way_to_a_scene});
    if (!outputs.ready() || !write_scene(scene, name)) return false;
    return !outputs.refused() && outputs.commit();
}

} // namespace tool
