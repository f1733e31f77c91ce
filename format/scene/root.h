#pragma once

/// `VOR2`, the scene root: everything in a scene, and by `save` and `load` the whole `.vr2` file.
///
/// A file is the magic word and then chunks to its end, without nesting, in any order. The root owns
/// all objects. Objects refer to each other by index, never by pointer or name.

#include "format/scene/environment.h"
#include "format/scene/matrix_hierarchy.h"
#include "format/scene/scene_info.h"

namespace VOR2_LOADER {

/// The first four bytes of a file, 01 32 52 56. It is written last, so that a file whose save didn't
/// finish is refused.
inline constexpr u32 MAGIC_WORD = 0x56523201;

class VOR2 : public VOR2_INTERNAL_ANIM_OBJECT {
public:
    VOR2_INF inf;
    VOR2_ENVIRONMENT environment;
    OWNED<VOR2_AMBIENT_LIGHT> ambient_light;
    OWNED<VOR2_GLOBAL_LIGHT_TINT> global_light_tint;
    VOR2_MATRIX_HIERARCHY matrix_hierarchy;
    VOR2_CAMERA_MAN camera_man;

    /// Clears the root and reads a file. False for an unreadable file, a wrong magic word, a chunk that
    /// overruns the file, a version above 1.16, an unknown kind of object or track, and a record that the
    /// file ends in; the buffer's `problem` says which. Unknown chunks are passed over. A failed load
    /// leaves a partly filled root, which is fit for anything.
    ///
    /// Memory and time are linear in the file's size whatever its counts say. With `set_to_start` the
    /// clock is set to the start of the scene's time range.
    bool load(VOR2_INPUT_BUFFER& buffer, bool set_to_start);
    bool load(const TEXT& file_name, bool set_to_start);

    /// Writes the newest form of everything. False when anything came back short; the magic word is then
    /// withheld if the file itself failed, so that what lies there can't pass for a scene.
    bool save(VOR2_WRITE_STREAM& stream) const;
    bool save(const TEXT& file_name) const;

    /// Back to an empty scene. `environment.sample_rate` stays, as `VOR2_ENVIRONMENT::reset` leaves it.
    void clear();

    /// The hierarchy first, since meshes read it, then every object that follows the clock.
    void advance(f32 delta) override;
    void set_time(f32 time) override;

    /// Tells a visitor every object with every field, as `save` would write them.
    void describe(RECORD_VISITOR& visitor) const;
};

} // namespace VOR2_LOADER
