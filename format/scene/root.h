#pragma once

/// `VOR2`, the scene root: everything in a scene, and by `save` and `load` the whole `.vr2` file.
///
/// A file is the magic word and then chunks to its end, without nesting, in any order. The root owns
/// all objects. Objects refer to each other by index, never by pointer or name. An entry of an array may
/// be absent: it is passed over everywhere, and written to no file.
///
/// Threads: a root belongs to one thread at a time. Roots that have nothing in common may be worked with on
/// as many threads as there are, and a root that nobody changes may be copied, described and saved, each to
/// a file of its own, by many at once. What the library keeps for the whole process are its hooks
/// (support/array/memory.h, support/platform/hooks.h), to be set before threads start, and the C runtime's
/// `rand`, which the repair of a scene draws on.

#include "format/geometry/anim_mesh.h"
#include "format/geometry/bezier_splines.h"
#include "format/geometry/morph_mesh.h"
#include "format/geometry/weighted_mesh.h"
#include "format/materials/cameras.h"
#include "format/materials/lights.h"
#include "format/scene/environment.h"
#include "format/scene/instances.h"
#include "format/scene/references.h"
#include "format/scene/scene_info.h"

namespace VOR2_LOADER {

/// The first four bytes of a file, 01 32 52 56. It is written last, so that a file whose save didn't
/// finish is refused.
inline constexpr u32 MAGIC_WORD = 0x56523201;

/// A load takes no more than this for each byte of its file. The worst known file comes to 22.
inline constexpr u64 MOST_MEMORY_A_BYTE = 64;

class VOR2 : public VOR2_INTERNAL_ANIM_OBJECT {
public:
    VOR2_INF inf;
    VOR2_ENVIRONMENT environment;
    OWNED<VOR2_AMBIENT_LIGHT> ambient_light;
    OWNED<VOR2_GLOBAL_LIGHT_TINT> global_light_tint;
    OWNED_ARRAY<VOR2_LIGHT> lights;
    OWNED_ARRAY<VOR2_CAMERA> cameras;
    OWNED_ARRAY<VOR2_RIGID> rigids;
    OWNED_ARRAY<VOR2_ANIM_MESH> anim_meshes;
    OWNED_ARRAY<VOR2_MORPH_MESH> morph_meshes;
    OWNED_ARRAY<VOR2_WEIGHTED_MESH> weighted_meshes;
    OWNED_ARRAY<VOR2_BEZIER_SPLINE_OBJECT> bezier_spline_objects;
    OWNED_ARRAY<VOR2_HELPER> helpers;
    OWNED_ARRAY<VOR2_XREF_SPEEDTREE> xref_speedtrees;
    VOR2_MATRIX_HIERARCHY matrix_hierarchy;
    OWNED_ARRAY<VOR2_MATERIAL> materials;
    /// Each array repeats objects of one sort, whatever class its instances have.
    OWNED_ARRAY<VOR2_INSTANCE> light_instances, camera_instances, rigid_instances, anim_mesh_instances,
        morph_mesh_instances, weighted_mesh_instances, bezier_spline_instances, helper_instances, xref_object_instances,
        speedtree_instances;
    OWNED_ARRAY<VOR2_XREF<15>> xrefs_15;
    OWNED_ARRAY<VOR2_XREF<20>> xrefs_20;
    OWNED_ARRAY<VOR2_XREF_OBJECT> xref_objects;
    VOR2_CAMERA_MAN camera_man;

    // Out of line, since whoever makes or copies a root inline makes the code of every class there is.
    VOR2();
    /// A deep copy; the hierarchy's parent links lead into the copy.
    VOR2(const VOR2& source);
    VOR2& operator=(const VOR2& source);
    VOR2(VOR2&&) noexcept;
    VOR2& operator=(VOR2&&) noexcept;
    ~VOR2() override;

    /// Clears the root and reads a file. False for an unreadable file, a wrong magic word, a chunk that
    /// overruns the file, a version above 1.16, an unknown kind of object or track, and a record that the
    /// file ends in; the buffer's `problem` says which. Unknown chunks are passed over. A failed load
    /// leaves a partly filled root, which is fit for anything.
    ///
    /// Whatever the file's counts say, no more than `MOST_MEMORY_A_BYTE` times its size is taken, and 1 MiB;
    /// the time is linear in its size, and no nesting in it makes a function call itself. Scenes in further
    /// files count with their own sizes; their depth, number and bytes have limits of their own
    /// (`VOR2_XREF::load`). With `set_to_start` the clock is set to the start of the scene's time range.
    bool load(VOR2_INPUT_BUFFER& buffer, bool set_to_start);
    bool load(const TEXT& file_name, bool set_to_start);

    /// Writes the newest form of everything. False when anything came back short; the magic word is then
    /// withheld if the file itself failed, so that what lies there can't pass for a scene.
    bool save(VOR2_WRITE_STREAM& stream) const;
    bool save(const TEXT& file_name) const;

    /// Derives what skinning needs from the hierarchy's pose at the start of the scene's time range, to
    /// which it moves the hierarchy. `load` ends with it; who builds or changes weighted meshes calls it
    /// himself. Does nothing, and moves nothing, in a scene without weighted meshes.
    void prepare_weighted_meshes();

    /// Back to an empty scene. `environment.sample_rate` stays, as `VOR2_ENVIRONMENT::reset` leaves it.
    void clear();

    /// The hierarchy first, since meshes read it, then every object that follows the clock, and weighted
    /// meshes are skinned. Helpers, outside objects and the instances of cameras don't follow it.
    void advance(f32 delta) override;
    void set_time(f32 time) override;

    /// Tells a visitor every object with every field, as `save` would write them.
    void describe(RECORD_VISITOR& visitor) const;
};

} // namespace VOR2_LOADER
