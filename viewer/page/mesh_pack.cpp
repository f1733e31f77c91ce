#include "viewer/page/mesh_pack.h"

#include "inspect/scene_facts.h"
#include "viewer/page/row_set.h"

#include <algorithm>
#include <cmath>

namespace vor2::viewer {
namespace {

using namespace VOR2_LOADER;

void append(std::vector<u32>& row, VECTOR_3 v) {
    for (const f32 number : {v.x, v.y, v.z}) row.push_back(word_of(number));
}

u32 eight_bits(f32 part) {
    return part > 0 ? static_cast<u32>(std::lround(std::min(part, 1.0F) * 255.0F)) : 0;
}

u32 packed(const VOR2_COLOUR& colour) {
    return eight_bits(colour.red) | eight_bits(colour.green) << 8U | eight_bits(colour.blue) << 16U |
           eight_bits(colour.alpha) << 24U;
}

constexpr u32 plain_width = 9; // position, normal, colour, u and v

} // namespace

int MeshPack::number_of(std::string_view list, u64 index) const {
    const auto known = numbers_.find({std::string(list), index});
    return known == numbers_.end() ? -1 : known->second;
}

void MeshPack::write_span(std::string_view key, WordSpan span) {
    json_.key(key);
    json_.begin_array(true);
    json_.number(span.first);
    json_.number(span.count);
    json_.end_array();
}

void MeshPack::write_all(const VOR2& scene) {
    json_.begin_array();
    write_list("rigids", scene.rigids);
    write_list("anim_meshes", scene.anim_meshes);
    write_list("morph_meshes", scene.morph_meshes);
    write_list("weighted_meshes", scene.weighted_meshes);
    json_.end_array();
}

template<class MESH>
void MeshPack::write_list(std::string_view list, const OWNED_ARRAY<MESH>& meshes) {
    for (u64 i = 0; i < meshes.size(); ++i) {
        if (!meshes[i]) continue;
        numbers_[{std::string(list), i}] = count_++;
        write_mesh(list, i, *meshes[i]);
    }
}

template<class MESH>
void MeshPack::write_mesh(std::string_view list, u64 index, const MESH& mesh) {
    json_.begin_object();
    json_.text("record", std::string(list) + "[" + std::to_string(index) + "]");
    json_.text("name", inspect::readable(mesh.name));
    json_.number("node", std::int64_t{mesh.matrix_index});
    std::vector<u32> place_of;
    place_of.reserve(mesh.vertices.size());
    write_vertices(mesh, place_of);
    write_groups(mesh, place_of);
    json_.end_object();
}

void MeshPack::write_groups(const VOR2_TRI_OBJECT& mesh, const std::vector<u32>& place_of) {
    std::vector<u32> triangles;
    json_.key("groups");
    json_.begin_array();
    for (const VOR2_TRI_SUB_OBJECT& group : mesh.sub_objects) {
        const u64 first = triangles.size() / 3;
        for (const VOR2_CARD32_TRIPLE& t : group.triangles) {
            if (std::max({t.first, t.second, t.third}) >= place_of.size()) {
                ++bad_triangles_;
                continue;
            }
            for (const u32 corner : {t.first, t.second, t.third}) triangles.push_back(place_of[corner]);
        }
        json_.begin_object();
        json_.number("first", u64{first});
        json_.number("count", u64{triangles.size() / 3 - first});
        json_.number("material", std::int64_t{static_cast<i32>(group.material_id)});
        json_.end_object();
    }
    json_.end_array();
    write_span("triangles", block_.add(triangles));
}

/// Writes what all vertices have, once for each that differs, and gives what `extra` appended to the row of each.
template<class VERTICES, class PLACE, class EXTRA>
std::vector<std::vector<u32>> MeshPack::write_plain_vertices(const VERTICES& vertices, std::vector<u32>& place_of,
                                                             PLACE place, EXTRA extra, u32 extra_width) {
    RowSet rows(vertices.size());
    bool coloured = false, mapped = false;
    for (const auto& vertex : vertices) {
        place(vertex, rows.row());
        const u32 colour = packed(vertex.colour);
        const VECTOR_3 uv = vertex.uvs.empty() ? VECTOR_3(0.0F, 0.0F, 0.0F) : vertex.uvs[0];
        coloured = coloured || colour != 0;
        mapped = mapped || !vertex.uvs.empty();
        for (const u32 word : {colour, word_of(uv.x), word_of(uv.y)}) rows.row().push_back(word);
        extra(vertex, rows.row());
        place_of.push_back(rows.take());
    }
    std::vector<u32> positions, normals, colours, uvs;
    std::vector<std::vector<u32>> extras(extra_width + 1); // where each vertex's begin, and the columns
    for (u32 i = 0; i < rows.count(); ++i) {
        const std::span<const u32> row = rows[i];
        positions.insert(positions.end(), row.begin(), row.begin() + 3);
        normals.insert(normals.end(), row.begin() + 3, row.begin() + 6);
        colours.push_back(row[6]);
        uvs.insert(uvs.end(), row.begin() + 7, row.begin() + plain_width);
        if (extra_width == 0) continue;
        extras[0].push_back(static_cast<u32>(extras[1].size()));
        for (u64 at = plain_width; at < row.size(); at += extra_width) {
            for (u32 column = 0; column < extra_width; ++column) extras[column + 1].push_back(row[at + column]);
        }
    }
    if (extra_width > 0) extras[0].push_back(static_cast<u32>(extras[1].size()));
    json_.number("vertices", std::int64_t{rows.count()});
    write_span("positions", block_.add(positions));
    write_span("normals", block_.add(normals));
    if (coloured)
        write_span("colours", block_.add_bytes({reinterpret_cast<const u8*>(colours.data()), colours.size() * 4}));
    if (mapped) write_span("uvs", block_.add(uvs));
    return extras;
}

void MeshPack::write_vertices(const VOR2_RIGID& mesh, std::vector<u32>& place_of) {
    json_.text("kind", "rigid");
    write_plain_vertices(
        mesh.vertices, place_of,
        [](const VOR2_RIGID_VERT& vertex, std::vector<u32>& row) {
            append(row, vertex.position);
            append(row, vertex.normal);
        },
        [](const VOR2_RIGID_VERT&, std::vector<u32>&) {}, 0);
}

void MeshPack::write_vertices(const VOR2_WEIGHTED_MESH& mesh, std::vector<u32>& place_of) {
    json_.text("kind", "weighted");
    const std::vector<std::vector<u32>> influences = write_plain_vertices(
        mesh.vertices, place_of,
        [](const VOR2_WEIGHTED_MESH_VERT& vertex, std::vector<u32>& row) {
            append(row, vertex.rest_position);
            append(row, vertex.rest_normal);
        },
        [](const VOR2_WEIGHTED_MESH_VERT& vertex, std::vector<u32>& row) {
            for (const VOR2_BONE_WEIGHT_DATA& bone : vertex.bone_weights) {
                row.push_back(static_cast<u32>(bone.bone_index));
                row.push_back(word_of(bone.weight));
            }
        },
        2);
    write_span("influenceStarts", block_.add(influences[0]));
    write_span("influenceBones", block_.add(influences[1]));
    write_span("influenceWeights", block_.add(influences[2]));
}

void MeshPack::write_vertices(const VOR2_MORPH_MESH& mesh, std::vector<u32>& place_of) {
    json_.text("kind", "morph");
    const std::vector<std::vector<u32>> offsets = write_plain_vertices(
        mesh.vertices, place_of,
        [](const VOR2_MORPH_MESH_VERT& vertex, std::vector<u32>& row) {
            append(row, vertex.position);
            append(row, vertex.normal);
        },
        [](const VOR2_MORPH_MESH_VERT& vertex, std::vector<u32>& row) {
            for (const VOR2_TARGET_VERT& target : vertex.target_verts) {
                row.push_back(static_cast<u32>(target.target_index));
                append(row, target.offset);
            }
        },
        4);
    std::vector<u32> triples;
    for (u64 i = 0; i < offsets[2].size(); ++i) {
        for (u32 column = 2; column < 5; ++column) triples.push_back(offsets[column][i]);
    }
    write_span("offsetStarts", block_.add(offsets[0]));
    write_span("offsetTargets", block_.add(offsets[1]));
    write_span("offsets", block_.add(triples));
    json_.key("targets");
    json_.begin_array();
    for (const auto& target : mesh.morph_targets) {
        json_.begin_object();
        json_.text("name", inspect::readable(target.name));
        json_.number("track", std::int64_t{tracks_.add(target.track)});
        json_.end_object();
    }
    json_.end_array();
}

// Nothing is shared here: each vertex has tracks of its own.
void MeshPack::write_vertices(const VOR2_ANIM_MESH& mesh, std::vector<u32>& place_of) {
    json_.text("kind", "anim");
    json_.number("vertices", u64{mesh.vertices.size()});
    std::vector<u32> numbers, uvs;
    bool mapped = false;
    for (const VOR2_ANIM_MESH_VERT& vertex : mesh.vertices) {
        place_of.push_back(static_cast<u32>(place_of.size()));
        for (const i32 track :
             {tracks_.add(vertex.position_track), tracks_.add(vertex.normal_track), tracks_.add(vertex.colour_track)})
            numbers.push_back(static_cast<u32>(track));
        VECTOR_3 uv(0.0F, 0.0F, 0.0F);
        if (!vertex.uv_tracks.empty()) vertex.get_uv(0, uv);
        mapped = mapped || !vertex.uv_tracks.empty();
        for (const f32 number : {uv.x, uv.y}) uvs.push_back(word_of(number));
    }
    const std::vector<u32> zeros(mesh.vertices.size() * 3);
    const WordSpan nothing = block_.add_shared(zeros);
    write_span("positions", nothing);
    write_span("normals", nothing);
    if (mapped) write_span("uvs", block_.add(uvs));
    write_span("vertexTracks", block_.add(numbers));
}

} // namespace vor2::viewer
