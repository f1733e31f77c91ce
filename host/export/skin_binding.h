#pragma once

/// From skins as the host has them to weighted meshes.
///
/// The library binds a weighted mesh to its bones where they stand at the start of the file's time range. Where a skin
/// is bound in another pose, the range begins one sample earlier, with the bones as they are bound, and the property
/// `first_time` of the mesh says where the motion itself begins. What a bone's node can't do, since an export samples
/// no scale and no shear, a node under it does: it is named like the bone, and the mesh has it for its bone.

#include "host/export/file_world.h"
#include "host/export/sample_range.h"
#include "host/export/skin.h"
#include "host/export/whole_mesh.h"

namespace VOR2_EXPORTER_MAYA {

class SKIN_BINDING {
public:
    SKIN_BINDING(VOR2& root, const FILE_WORLD& world, const SAMPLE_RANGE& range)
        : my_root(root), my_world(world), my_range(range) {}

    /// Takes a mesh that a skin cluster moves, as it comes to that, at the node with that index. The host's clock
    /// stands at the start of the range. False, with a message, when a bone has no node in the file.
    [[nodiscard]] bool add(const MDagPath& shape, unsigned int index, const DEFORMER& deformer, WHOLE_MESH mesh);
    [[nodiscard]] bool has_meshes() const { return !my_meshes.empty(); }
    /// Once for each sample, in order; the host's clock stands there, and the hierarchy's.
    void sample();
    /// Appends the weighted meshes to the root, and what they need to the hierarchy.
    void finish();

private:
    struct INFLUENCE {
        i32 node = 0;                 ///< what carries it in the file
        std::vector<AFFINE> maps;     ///< at each sample, from the mesh as it is bound to the file's world
        AFFINE::COLUMN low{}, high{}; ///< of the points that it moves
        bool is_used = false;
    };
    struct MESH_IN_WORK {
        MDagPath shape;
        unsigned int index = 0, top = 0;
        SKIN skin;
        WHOLE_MESH mesh;
        AFFINE to_bound;                    ///< from the mesh's own space to the file's world, as it is bound
        AFFINE from_host;                   ///< undoes that
        std::vector<AFFINE::COLUMN> points; ///< of the vertices, as bound
        std::vector<INFLUENCE> influences;  ///< those of the skin, and last the mesh's own place
        double size = 0.0;
    };

    void measure(MESH_IN_WORK& work) const;
    [[nodiscard]] bool is_bound_as_it_starts(const MESH_IN_WORK& work) const;
    void move_bound(MESH_IN_WORK& work, const AFFINE& by) const;
    void add_lead_in(f32 time);
    void follow(MESH_IN_WORK& work);
    void add_mesh(MESH_IN_WORK& work);
    [[nodiscard]] AFFINE node_at(i32 node, std::size_t sample) const;

    VOR2& my_root;
    const FILE_WORLD& my_world;
    const SAMPLE_RANGE& my_range;
    std::vector<MESH_IN_WORK> my_meshes;
    std::map<i32, std::vector<MATRIX_3X4>> my_nodes; ///< of each that carries anything, its world at each sample
    std::vector<MATRIX_3X4> my_bound;                ///< of all nodes, their world as the meshes are bound
    bool my_leads_in = false;
    f32 my_bound_time = 0.0F;
};

} // namespace VOR2_EXPORTER_MAYA
