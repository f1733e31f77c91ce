#pragma once

/// Scenes as other formats have them, and how they become the library's: right-handed, y up, in metres and seconds,
/// with transforms in double precision.
///
/// A skinned mesh of the library is bound to the pose at the start of the scene's time range, and to no other. Where
/// the bind pose of a skin isn't that pose, the scene gets a lead-in: its time range begins one sample earlier, with
/// the skeleton as it is bound, and the property `first_time` of the mesh says where the scene itself begins. So every
/// pose from there on is the source's own.

#include "convert/affine.h"
#include "convert/material_values.h"
#include "convert/report.h"
#include "format/vor2.h"

#include <cstdint>
#include <map>

namespace vor2::convert {

template<class VALUE>
struct ImportedTrack {
    std::vector<float> times; ///< ascending
    std::vector<VALUE> values;
};

struct ImportedNode {
    std::string name;
    int parent = -1; ///< stands before its children; -1 for none
    Placement placement;
    ImportedTrack<Vec3> position, scale;
    ImportedTrack<Quat> rotation;
    std::string text;
    VOR2_LOADER::VOR2_EXTENDED_PROPERTIES properties;
    bool helper = false;
};

struct ImportedGroup {
    int material = -1;
    std::vector<std::uint32_t> corners; ///< three a triangle, below the count of vertices
};

struct ImportedTarget {
    std::string name;
    std::vector<std::uint32_t> vertices;
    std::vector<float> offsets; ///< three a vertex
    double weight = 0;
};

struct ImportedInfluence {
    std::uint32_t joint; ///< place in `joints`
    float weight;
};

struct ImportedMesh {
    std::string name;
    int node = -1;
    std::vector<float> positions, normals; ///< three a vertex; normals may be missing
    std::vector<float> tangents, colours;  ///< four a vertex, or none
    std::vector<std::vector<float>> uvs;   ///< two a vertex for each set, v upwards
    std::vector<ImportedGroup> groups;
    std::vector<ImportedTarget> targets;
    ImportedTrack<std::vector<float>> weights;              ///< of all targets
    std::vector<int> joints;                                ///< nodes
    std::vector<Affine> inverse_binds;                      ///< for each joint, from the vertices' space
    std::vector<std::vector<ImportedInfluence>> influences; ///< for each vertex of a skinned mesh
    std::vector<std::uint32_t> channels;
    VOR2_LOADER::VOR2_EXTENDED_PROPERTIES properties;
};

/// A mesh again, at another node.
struct ImportedInstance {
    std::string name;
    int node = -1;
    std::size_t mesh = 0; ///< of those without a skin
};

struct ImportedLine {
    std::string name;
    int node = -1;
    std::vector<std::vector<float>> strips; ///< three a point
};

struct ImportedLight {
    enum class Kind { directional, point, spot };
    std::string name;
    int node = -1;
    Kind kind = Kind::point;
    std::array<double, 3> colour{1, 1, 1};
    double intensity = 1, range = 0, inner_angle = 0, outer_angle = 0.785;
    VOR2_LOADER::VOR2_EXTENDED_PROPERTIES properties;
};

struct ImportedCamera {
    std::string name;
    int node = -1;
    bool orthographic = false;
    double size = 0.8; ///< as `camera.float_track_1` (`convert/gltf/objects.h`)
    double nearest = 0.1, furthest = 0, aspect_ratio = 0;
    VOR2_LOADER::VOR2_EXTENDED_PROPERTIES properties;
};

struct ImportedScene {
    std::vector<ImportedNode> nodes;
    std::vector<ImportedMesh> meshes;
    std::vector<ImportedInstance> instances;
    std::vector<ImportedLine> lines;
    std::vector<ImportedLight> lights;
    std::vector<ImportedCamera> cameras;
    std::vector<MaterialValues> materials;
    double sample_rate = 30;
    std::string source; ///< for the record in the file
};

/// One animation of a file that may hold several.
struct ImportedAnimation {
    struct NodeTracks {
        ImportedTrack<Vec3> position, scale;
        ImportedTrack<Quat> rotation;
    };
    std::string name;
    std::map<int, NodeTracks> nodes;
    std::map<std::size_t, ImportedTrack<std::vector<float>>> weights; ///< by mesh
};

/// A picture that lies in the file, under the name that the materials have for it.
struct ImportedPicture {
    std::string name;
    std::vector<std::uint8_t> bytes;
};

struct ImportedFile {
    ImportedScene scene; ///< as it stands without any animation
    std::vector<ImportedAnimation> animations;
    std::vector<ImportedPicture> pictures;
};

/// Puts an animation into the scene, in place of what moved it before.
void set_animation(const ImportedAnimation& animation, ImportedScene& scene);

/// Fills an empty scene and sets its clock to the first time.
void build_scene(const ImportedScene& source, VOR2_LOADER::VOR2& scene, Report& report);

/// Where a node is in its parent at a time, as glTF moves between keys.
[[nodiscard]] Placement placement_at(const ImportedNode& node, double time);
/// The world's matrix of each node at a time.
[[nodiscard]] std::vector<Affine> worlds_at(const std::vector<ImportedNode>& nodes, double time);

} // namespace vor2::convert
