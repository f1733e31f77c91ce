#include "format/geometry/scene_check.h"

#include "format/core/files.h"
#include "format/core/paths.h"
#include "support/platform/platform.h"
#include "support/text/formatter.h"
#include "support/text/text_helpers.h"

#include <cstdlib>

namespace VOR2_LOADER {
namespace {

/// Not all exponent bits set: neither an infinity nor a NaN.
bool is_finite(f32 number) {
    return (std::bit_cast<u32>(number) & 0x7F800000U) < 0x7F800000U;
}
bool is_finite(VECTOR_3 v) {
    return is_finite(v.x) && is_finite(v.y) && is_finite(v.z);
}

/// 0 to 32,767 in every runtime, the range that the scales below are made for.
f32 random_number() {
    return static_cast<f32>(std::rand() & 0x7FFF); // NOLINT(cert-msc30-c,cert-msc50-cpp): not for secrets
}

VECTOR_3 random_uv() {
    VECTOR_3 uv;
    uv.z = random_number() * 3.051851e-5F;
    uv.y = random_number() * 3.051851e-5F;
    uv.x = random_number() * 3.051851e-5F;
    return uv;
}

VECTOR_3 random_normal() {
    VECTOR_3 normal;
    normal.z = random_number() * 6.103702e-5F - 1.0F;
    normal.y = random_number() * 6.103702e-5F - 1.0F;
    normal.x = random_number() * 6.103702e-5F - 1.0F;
    // Up, where there is no length to divide by.
    return normal.length_squared() > 0 ? normal.normalised() : VECTOR_3(0.0F, 0.0F, 1.0F);
}

/// What the check of one mesh collects.
struct MESH_PROBLEMS {
    struct CHANNEL {
        bool u = true, v = true, w = true;
    };
    ARRAY<CHANNEL> channels;
    ARRAY<VECTOR_3> bad_normals; ///< positions, in vertex order
};

void check_uv(VECTOR_3& uv, MESH_PROBLEMS::CHANNEL& channel, bool fix) {
    if (is_finite(uv)) return;
    channel.u = channel.u && is_finite(uv.x);
    channel.v = channel.v && is_finite(uv.y);
    channel.w = channel.w && is_finite(uv.z);
    if (fix) uv = random_uv();
}

void check_vertex(VOR2_RIGID_VERT& vertex, MESH_PROBLEMS& found, bool fix) {
    const u64 channels = std::min(found.channels.size(), vertex.uvs.size());
    for (u64 c = 0; c < channels; ++c) check_uv(vertex.uvs[c], found.channels[c], fix);
    if (is_finite(vertex.normal)) return;
    found.bad_normals.push_back(vertex.position);
    if (fix) vertex.normal = random_normal();
}

void give_constant_normal(VOR2_ANIM_MESH_VERT& vertex, VECTOR_3 normal) {
    vertex.normal_track->key_times().clear();
    vertex.normal_track->key_values().clear();
    vertex.normal_track->add_key(normal, 0.0F);
}

void check_vertex(VOR2_ANIM_MESH_VERT& vertex, MESH_PROBLEMS& found, bool fix) {
    const u64 channels = std::min(found.channels.size(), vertex.uv_tracks.size());
    for (u64 c = 0; c < channels; ++c) {
        if (!vertex.uv_tracks[c]) continue;
        for (VECTOR_3& key : vertex.uv_tracks[c]->key_values()) check_uv(key, found.channels[c], fix);
    }
    VECTOR_3 normal{0.0F, 0.0F, 0.0F};
    vertex.get_normal(normal);
    if (is_finite(normal)) return;
    if (fix) give_constant_normal(vertex, random_normal());
    VECTOR_3 position{0.0F, 0.0F, 0.0F};
    vertex.get_position(position);
    found.bad_normals.push_back(position);
}

class SCENE_CHECK {
public:
    SCENE_CHECK(NARROW_TEXT& problems, bool fix, POSITION_CONVERTER convert)
        : my_problems(problems), my_fix(fix), my_convert(convert) {}

    void collect_problems(VOR2& root) {
        NARROW_TEXT section;
        check_meshes(root, root.rigids, section);
        check_meshes(root, root.morph_meshes, section);
        check_meshes(root, root.weighted_meshes, section);
        check_meshes(root, root.anim_meshes, section);
        if (section.length() > 0) {
            my_problems.append(narrow(root.inf.file_info.view()).view());
            my_problems.append(section.view());
            my_problems.append("\r\n\r\n");
        }
        for (OWNED<VOR2_XREF<15>>& xref : root.xrefs_15) {
            if (xref && xref->scene) collect_problems(*xref->scene);
        }
    }

private:
    template<class MESH>
    void check_meshes(const VOR2& root, OWNED_ARRAY<MESH>& meshes, NARROW_TEXT& section) {
        for (OWNED<MESH>& mesh : meshes) {
            if (mesh) check_mesh(root, *mesh, section);
        }
    }

    template<class MESH>
    void check_mesh(const VOR2& root, MESH& mesh, NARROW_TEXT& section) {
        MESH_PROBLEMS found;
        for (u64 c = 0; c < mesh.mapping_channels.size(); ++c) found.channels.push_back({});
        for (auto& vertex : mesh.vertices) check_vertex(vertex, found, my_fix);
        tell_channels(mesh, found, section);
        // The vertices of a weighted mesh are in world space already.
        const bool in_world = std::same_as<MESH, VOR2_WEIGHTED_MESH>;
        const u64 node = mesh.matrix_index;
        const ARRAY<VOR2_MATRIX_NODE>& nodes = root.matrix_hierarchy.nodes;
        const bool placed = !in_world && node < nodes.size();
        tell_normals(mesh, found, placed ? &nodes[node].world_matrix : nullptr, in_world, section);
    }

    void tell_channels(const VOR2_GEOM_OBJECT& mesh, const MESH_PROBLEMS& found, NARROW_TEXT& section) const {
        static const NARROW_TEXT LINE("Object Name: %S. Max mapping channel: %u. %S , %S , %S.\r\n");
        const auto is_bad = [](const MESH_PROBLEMS::CHANNEL& c) { return !c.u || !c.v || !c.w; };
        if (std::none_of(found.channels.begin(), found.channels.end(), is_bad)) return;
        tell_space(section);
        for (u64 c = 0; c < found.channels.size(); ++c) {
            const MESH_PROBLEMS::CHANNEL& channel = found.channels[c];
            if (!is_bad(channel)) continue;
            section.append(formatted(LINE, narrow(mesh.name.view()), mesh.mapping_channels[c],
                                     NARROW_TEXT(channel.u ? "Good U" : "BAD U!"),
                                     NARROW_TEXT(channel.v ? "Good V" : "BAD V!"),
                                     NARROW_TEXT(channel.w ? "Good W" : "BAD W!"))
                               .view());
        }
    }

    void tell_normals(const VOR2_GEOM_OBJECT& mesh, const MESH_PROBLEMS& found, const MATRIX_3X4* world, bool in_world,
                      NARROW_TEXT& section) const {
        static const NARROW_TEXT LINE("Object Name: %S - has a vertex at the following position (%.2f , %.2f , %.2f) "
                                      "which has a dodgy normal.\r\n");
        if (found.bad_normals.empty()) return;
        if (!in_world) tell_space(section);
        for (const VECTOR_3& stored : found.bad_normals) {
            const VECTOR_3 at = my_convert(world != nullptr ? world->transform_point(stored) : stored);
            section.append(formatted(LINE, narrow(mesh.name.view()), at.x, at.y, at.z).view());
        }
    }

    void tell_space(NARROW_TEXT& section) const {
        if (my_convert != swap_y_z) return;
        section.append("\r\nPlease note that all vertex positions are given in metres in 3dsMax space! So please open "
                       "the appropriate Max file (should be printed at the top of this document) to fix these "
                       "problems. Also, please ensure that your units are set to metres in 3dsMax too! If not these "
                       "vertex positions will not make sense!\r\n\r\n");
    }

    NARROW_TEXT& my_problems;
    bool my_fix;
    POSITION_CONVERTER my_convert;
};

void write_report(const NARROW_TEXT& report_file, const NARROW_TEXT& problems, bool open_report) {
    const TEXT name = widen(report_file.view());
    bool has_folder = true;
    const TEXT folder = directory_of(name, has_folder);
    // A folder that can't be made shows when the file is opened.
    if (folder.length() > 0 && !file_exists(folder)) static_cast<void>(create_directories(folder));
    if (file_exists(name)) platform::make_writable(name.view());
    WRITE_FILE file;
    if (file.open(name, false)) file.write(problems.c_str(), static_cast<u32>(problems.length() + 1));
    file.close();
    if (open_report) platform::start_program("notepad", report_file.c_str());
}

} // namespace

VECTOR_3 swap_y_z(VECTOR_3 position) {
    return {position.x, position.z, position.y};
}

void check_scene(VOR2& root, NARROW_TEXT& problems, bool fix_problems, const NARROW_TEXT* report_file, bool open_report,
                 POSITION_CONVERTER convert_position) {
    problems.clear();
    SCENE_CHECK(problems, fix_problems, convert_position).collect_problems(root);
    if (report_file != nullptr && problems.length() > 0) write_report(*report_file, problems, open_report);
}

} // namespace VOR2_LOADER
