#include "viewer/page/scene_pack.h"

#include "inspect/scene_facts.h"
#include "inspect/strict_check.h"
#include "viewer/page/mesh_pack.h"
#include "viewer/page/pictures.h"

namespace vor2::viewer {
namespace {

using namespace VOR2_LOADER;
using inspect::JsonWriter;
using inspect::readable;
using inspect::SceneFacts;
using inspect::TextOut;

/// A page shows that many findings and tells how many more there are.
constexpr std::size_t most_findings = 1000;

class ScenePacker {
public:
    ScenePacker(const TEXT& file_name, const VOR2& scene, JsonWriter& json)
        : file_name_(file_name), scene_(scene), json_(json), tracks_(block_), meshes_(block_, tracks_, json),
          pictures_(file_name, block_) {}

    void write(const SceneFacts& facts) {
        json_.begin_object();
        write_facts(facts);
        write_findings();
        write_nodes();
        write_properties();
        json_.key("meshes");
        meshes_.write_all(scene_);
        json_.number("badTriangles", meshes_.bad_triangles());
        write_materials();
        write_objects();
        write_span("tracks", tracks_.finish());
        json_.end_object();
    }
    const std::vector<u32>& words() const { return block_.words(); }
    std::vector<std::string> notes() const { return pictures_.missing(); }

private:
    void write_span(std::string_view key, WordSpan span) {
        json_.key(key);
        json_.begin_array(true);
        json_.number(span.first);
        json_.number(span.count);
        json_.end_array();
    }

    void write_facts(const SceneFacts& facts);
    void write_findings();
    void write_nodes();
    void write_properties();
    template<class LIST>
    void write_properties_of(u64 node, const LIST& list);
    void write_materials();
    void write_placement(const VOR2_MATERIAL& material);
    void write_objects();
    template<class LIST>
    void write_objects_of(std::string_view kind, std::string_view record, const LIST& list);
    void write_instances(std::string_view record, const OWNED_ARRAY<VOR2_INSTANCE>& instances,
                         std::string_view repeated);
    void write_object(std::string_view kind, std::string_view record, u64 index, const VOR2_POSITIONAL_OBJECT& object,
                      int mesh);

    const TEXT& file_name_;
    const VOR2& scene_;
    JsonWriter& json_;
    WordBlock block_;
    TrackTable tracks_;
    MeshPack meshes_;
    Pictures pictures_;
};

void ScenePacker::write_facts(const SceneFacts& facts) {
    json_.text("file", facts.file);
    json_.number("bytes", facts.bytes);
    json_.number("version", facts.version);
    json_.text("creator", facts.creator);
    json_.key("record");
    json_.begin_object();
    json_.text("user", facts.record.user);
    json_.text("exportedAt", facts.record.exported_at);
    json_.text("exportedAs", facts.record.exported_as);
    json_.text("source", facts.record.source);
    json_.boolean("forced", facts.record.forced);
    json_.text("text", facts.record.recognised ? "" : facts.file_info);
    json_.end_object();
    json_.number("start", facts.start);
    json_.number("end", facts.end);
    json_.number("rate", facts.sample_rate);
    json_.key("counts");
    json_.begin_array();
    for (const auto& [name, count] : facts.objects) {
        json_.begin_array(true);
        json_.text(name);
        json_.number(count);
        json_.end_array();
    }
    json_.end_array();
    json_.key("chunks");
    json_.begin_array();
    for (const inspect::ChunkSize& chunk : facts.chunks.kinds) {
        json_.begin_array(true);
        json_.text(chunk.name);
        json_.number(chunk.count);
        json_.number(chunk.bytes);
        json_.end_array();
    }
    json_.end_array();
    json_.number("trackCount", facts.tracks);
    json_.number("keyCount", facts.keys);
}

void ScenePacker::write_findings() {
    json_.key("findings");
    json_.begin_array();
    std::size_t told = 0;
    const std::uint64_t count =
        inspect::check_strictly(scene_, file_name_, [this, &told](const inspect::Finding& finding) {
            if (told++ >= most_findings) return;
            json_.begin_object();
            json_.text("record", finding.record);
            json_.text("name", std::u16string_view(finding.name));
            json_.text("field", finding.field);
            json_.text("value", finding.value);
            json_.text("complaint", finding.complaint);
            json_.end_object();
        });
    json_.end_array();
    json_.number("findingCount", count);
}

void ScenePacker::write_nodes() {
    json_.key("nodes");
    json_.begin_array();
    for (const VOR2_MATRIX_NODE& node : scene_.matrix_hierarchy.nodes) {
        json_.begin_object();
        json_.text("name", readable(node.name));
        json_.number("parent", std::int64_t{node.parent_index});
        json_.key("tracks");
        json_.begin_array(true);
        json_.number(std::int64_t{tracks_.add(node.position_track)});
        json_.number(std::int64_t{tracks_.add(node.rotation_track)});
        json_.number(std::int64_t{tracks_.add(node.scale_track)});
        json_.end_array();
        const bool tracked = node.position_track || node.rotation_track || node.scale_track;
        if (!tracked && node.world_matrix != MATRIX_3X4::identity()) {
            json_.key("matrix");
            json_.begin_array(true);
            for (const auto& row : node.world_matrix.m) {
                for (const f32 part : row) json_.number(part);
            }
            json_.end_array();
        }
        json_.end_object();
    }
    json_.end_array();
}

template<class LIST>
void ScenePacker::write_properties_of(u64 node, const LIST& list) {
    for (const auto& property : list) {
        if (!property.track) continue;
        json_.begin_object();
        json_.number("node", std::uint64_t{node});
        json_.text("name", readable(property.name));
        json_.number("track", std::int64_t{tracks_.add(property.track)});
        json_.end_object();
    }
}

void ScenePacker::write_properties() {
    json_.key("properties");
    json_.begin_array();
    const auto& nodes = scene_.matrix_hierarchy.nodes;
    for (u64 i = 0; i < nodes.size(); ++i) {
        const VOR2_EXTENDED_PROPERTIES& properties = nodes[i].extended_properties;
        write_properties_of(i, properties.int_properties);
        write_properties_of(i, properties.float_properties);
        write_properties_of(i, properties.vector_3_properties);
        write_properties_of(i, properties.vector_4_properties);
    }
    json_.end_array();
}

void ScenePacker::write_materials() {
    json_.key("materials");
    json_.begin_array();
    for (const OWNED<VOR2_MATERIAL>& material : scene_.materials) {
        json_.begin_object();
        json_.text("name", material ? readable(material->name) : std::string());
        const auto* standard = dynamic_cast<const VOR2_STANDARD_MATERIAL*>(material.get());
        json_.key("colours");
        json_.begin_array(true);
        if (standard != nullptr) {
            for (const auto* track : {&standard->ambient_colour, &standard->colour_track_1, &standard->colour_track_2,
                                      &standard->colour_track_3})
                json_.number(std::int64_t{tracks_.add(*track)});
        }
        json_.end_array();
        json_.number("transparency", std::int64_t{standard != nullptr ? tracks_.add(standard->transparency) : -1});
        json_.number("picture", std::int64_t{material ? pictures_.of_material(*material) : -1});
        if (material) write_placement(*material);
        json_.end_object();
    }
    json_.end_array();
    json_.key("pictures");
    pictures_.write_all(json_);
}

/// Where the picture lies, and what is beyond it: turned counterclockwise about its middle after repeat and offset, V
/// upward, as the host does it.
void ScenePacker::write_placement(const VOR2_MATERIAL& material) {
    const VOR2_BITMAP_MATERIAL_MAP* map = Pictures::colour_map(material);
    if (map == nullptr) return;
    const VOR2_BITMAP_MATERIAL_MAP_COORDINATES& place = map->coordinates;
    VECTOR_2 offset(0.0F, 0.0F), repeat(1.0F, 1.0F);
    VECTOR_3 angles(0.0F, 0.0F, 0.0F);
    if (place.uv_track_0) place.uv_track_0->value(offset);
    if (place.uv_track_1) place.uv_track_1->value(repeat);
    if (place.uvw_track) place.uvw_track->value(angles);
    json_.key("placement");
    json_.begin_array(true);
    for (const f32 number : {offset.x, offset.y, repeat.x, repeat.y, angles.z})
        json_.number(std::isfinite(number) ? number : 0.0F);
    for (const u32 mode : {place.wrap_mode.u_mode, place.wrap_mode.v_mode})
        json_.number(std::int64_t{mode == 0 || mode == 2 ? mode : 1});
    json_.end_array();
    if (Pictures::makes_clear(material)) json_.boolean("clear", true);
}

void ScenePacker::write_object(std::string_view kind, std::string_view record, u64 index,
                               const VOR2_POSITIONAL_OBJECT& object, int mesh) {
    json_.begin_object();
    json_.text("kind", kind);
    json_.text("record", std::string(record) + "[" + std::to_string(index) + "]");
    json_.text("name", readable(object.name));
    json_.number("node", std::uint64_t{object.matrix_index});
    if (mesh >= 0) json_.number("mesh", std::int64_t{mesh});
    json_.end_object();
}

template<class LIST>
void ScenePacker::write_objects_of(std::string_view kind, std::string_view record, const LIST& list) {
    for (u64 i = 0; i < list.size(); ++i) {
        if (list[i]) write_object(kind, record, i, *list[i], -1);
    }
}

void ScenePacker::write_instances(std::string_view record, const OWNED_ARRAY<VOR2_INSTANCE>& instances,
                                  std::string_view repeated) {
    for (u64 i = 0; i < instances.size(); ++i) {
        if (!instances[i]) continue;
        write_object("instance", record, i, *instances[i], meshes_.number_of(repeated, instances[i]->instanced_object));
    }
}

void ScenePacker::write_objects() {
    json_.key("objects");
    json_.begin_array();
    write_objects_of("light", "lights", scene_.lights);
    write_objects_of("camera", "cameras", scene_.cameras);
    write_objects_of("spline", "bezier_spline_objects", scene_.bezier_spline_objects);
    write_objects_of("helper", "helpers", scene_.helpers);
    write_objects_of("reference", "xref_objects", scene_.xref_objects);
    write_instances("rigid_instances", scene_.rigid_instances, "rigids");
    write_instances("anim_mesh_instances", scene_.anim_mesh_instances, "anim_meshes");
    write_instances("morph_mesh_instances", scene_.morph_mesh_instances, "morph_meshes");
    write_instances("weighted_mesh_instances", scene_.weighted_mesh_instances, "weighted_meshes");
    json_.end_array();
}

/// "<" stands in texts alone, where its escape says the same.
std::string without_angles(const std::string& json) {
    std::string out;
    out.reserve(json.size());
    for (const char c : json) {
        if (c == '<') {
            out += "\\u003c";
        } else {
            out += c;
        }
    }
    return out;
}

} // namespace

ScenePack pack_scene(const std::string& file, const TEXT& file_name, const VOR2& scene, std::span<const u8> bytes) {
    const SceneFacts facts = inspect::gather_facts(file, scene, bytes);
    std::string json;
    ScenePack pack;
    {
        TextOut out(json);
        JsonWriter writer(out, JsonWriter::Layout::line);
        ScenePacker packer(file_name, scene, writer);
        packer.write(facts);
        pack.words = packer.words();
        pack.notes = packer.notes();
    }
    pack.json = without_angles(json);
    return pack;
}

} // namespace vor2::viewer
