#include "format/scene/references.h"

#include "format/core/paths.h"
#include "format/core/record_operations.h"
#include "format/scene/root.h"
#include "support/platform/platform.h"
#include "support/text/unicode.h"

namespace VOR2_LOADER {
namespace {

/// Why the file at `path` must not be read from within `buffer`'s; empty if it may.
std::string reason_to_refuse(VOR2_INPUT_BUFFER& buffer, const TEXT& path) {
    u32 chain = 0;
    for (const VOR2_INPUT_BUFFER* file = &buffer; file != nullptr; file = file->referring(), ++chain) {
        if (platform::same_file(file->file_name, path)) return "it refers back to a file that refers to it";
    }
    if (chain > LONGEST_REFERENCE_CHAIN) {
        return "it is reached through more than " + std::to_string(LONGEST_REFERENCE_CHAIN) + " files";
    }
    if (buffer.outermost().references_opened >= MOST_REFERENCES) {
        return "more than " + std::to_string(MOST_REFERENCES) + " files are referred to";
    }
    return {};
}

/// Fills `scene` from the file that `file_name` names, if it exists.
bool load_referenced(VOR2& scene, VOR2_INPUT_BUFFER& buffer, const TEXT& file_name) {
    const TEXT path = resolve_path(buffer.file_name, file_name);
    if (!file_exists(path)) return true;
    std::string problem = reason_to_refuse(buffer, path);
    if (problem.empty()) {
        ++buffer.outermost().references_opened;
        VOR2_INPUT_BUFFER referenced(path, buffer);
        if (scene.load(referenced, true)) return true;
        problem = referenced.problem();
    }
    return buffer.fail("the referenced file " + to_readable_utf8(path) + ": " + problem);
}

bool is_being_written(const VOR2_WRITE_STREAM& stream, const TEXT& path) {
    for (const VOR2_WRITE_STREAM* file = &stream; file != nullptr; file = file->referring) {
        if (file->file_name() == path || platform::same_file(file->file_name(), path)) return true;
    }
    return false;
}

/// Writes `scene` to the file that `file_name` names.
bool save_referenced(const VOR2& scene, const VOR2_WRITE_STREAM& stream, const TEXT& file_name) {
    const TEXT path = resolve_path(stream.file_name(), file_name);
    if (is_being_written(stream, path)) return false;
    bool is_file = true;
    // A folder that can't be made shows when the file is opened.
    static_cast<void>(create_directories(directory_of(path, is_file)));
    VOR2_WRITE_STREAM referenced;
    referenced.referring = &stream;
    if (!referenced.open(path, false, true)) return false;
    const bool saved = scene.save(referenced);
    return referenced.close() && saved && is_file;
}

} // namespace

template<u32 ID>
VOR2_XREF<ID>::VOR2_XREF() = default;
template<u32 ID>
VOR2_XREF<ID>::VOR2_XREF(const VOR2_XREF& source) = default;
template<u32 ID>
VOR2_XREF<ID>& VOR2_XREF<ID>::operator=(const VOR2_XREF& source) = default;
template<u32 ID>
VOR2_XREF<ID>::VOR2_XREF(VOR2_XREF&&) noexcept = default;
template<u32 ID>
VOR2_XREF<ID>& VOR2_XREF<ID>::operator=(VOR2_XREF&&) noexcept = default;
template<u32 ID>
VOR2_XREF<ID>::~VOR2_XREF() = default;

template<u32 ID>
bool VOR2_XREF<ID>::load(VOR2_INPUT_BUFFER& buffer) {
    scene.reset();
    RECORD_OPERATIONS<VOR2_XREF>::load(*this, buffer, 0);
    scene = make_owned<VOR2>();
    return load_referenced(*scene, buffer, file_name);
}

template<u32 ID>
bool VOR2_XREF<ID>::save(VOR2_WRITE_STREAM& stream) const {
    RECORD_OPERATIONS<VOR2_XREF>::save(*this, stream);
    return !scene || save_referenced(*scene, stream, file_name);
}

template<u32 ID>
void VOR2_XREF<ID>::describe(RECORD_VISITOR& visitor) const {
    RECORD_OPERATIONS<VOR2_XREF>::describe(*this, visitor);
    if (!scene) return visitor.absent("scene");
    visitor.begin_object("scene", "VOR2");
    scene->describe(visitor);
    visitor.end_object();
}

template<u32 ID>
void VOR2_XREF<ID>::advance(f32 delta) {
    if (scene) scene->advance(delta);
}

template<u32 ID>
void VOR2_XREF<ID>::set_time(f32 time) {
    if (scene) scene->set_time(time);
}

template class VOR2_XREF<15>;
template class VOR2_XREF<20>;

template struct RECORD_OPERATIONS<VOR2_XREF_OBJECT>;
template struct RECORD_OPERATIONS<VOR2_XREF_SPEEDTREE>;

} // namespace VOR2_LOADER
