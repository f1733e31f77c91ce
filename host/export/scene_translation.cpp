#include "host/export/scene_translation.h"

#include "format/tracks/constant_track.h"
#include "host/export/export_record.h"
#include "host/export/host_text.h"
#include "host/export/host_time.h"
#include "host/export/key_reduction.h"
#include "host/export/mesh_export.h"
#include "host/export/node_list.h"
#include "host/export/node_translation.h"
#include "host/export/sample_range.h"
#include "host/export/transform_conversion.h"

#include <maya/MAnimControl.h>
#include <maya/MDagPath.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MTime.h>

#include <cmath>
#include <set>
#include <string>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr f32 MOST_OFF_UNIT_SQUARE = 2e-3F; ///< of a rotation that is as good as one of unit length

void fill_environment(VOR2_ENVIRONMENT& environment, const SAMPLE_RANGE& range) {
    environment.sample_rate = range.sample_at;
    environment.time_range.start = range.start_time();
    environment.time_range.end = range.time(range.stop_sample);
}

void insert_root(VOR2_MATRIX_HIERARCHY& hierarchy, const SAMPLE_RANGE& range) {
    hierarchy.nodes.grow_by(1);
    VOR2_MATRIX_NODE& node = hierarchy.nodes[0];
    node.name = u"Exporter Inserted Root";
    node.position_track =
        constant_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(VECTOR_3(0.0F, 0.0F, 0.0F), range.start_time());
    node.rotation_track = constant_track<VOR2_ANIMATABLE_QUATERNION_SLERP>(QUATERNION::identity(), range.start_time());
}

// The origin node's offset at the first frame, or none.
VECTOR_3 read_world_origin_offset(const EXPORT_SETTINGS& settings) {
    const VECTOR_3 nothing(0.0F, 0.0F, 0.0F);
    if (settings.use_node_origin.length() == 0) return nothing;
    MSelectionList origin_node_list;
    MGlobal::getSelectionListByName(settings.use_node_origin, origin_node_list);
    MDagPath origin;
    if (origin_node_list.length() > 0) {
        TIME_NODE_CLOCK().move_to(time_of_frame(settings.start_frame));
        if (origin_node_list.getDagPath(0, origin)) return origin_offset(origin);
    }
    MGlobal::displayWarning(MString("The origin node has no place in the scene: ") + settings.use_node_origin);
    return nothing;
}

bool translate_nodes(const NODE_LIST& list, VOR2& root, u32 key_reserve) {
    HIERARCHY_INDEX translated;
    root.matrix_hierarchy.nodes.reserve(list.nodes.length() + 1 - list.indexes_to_skip.size());
    i32 next_index = 1;
    for (unsigned int i = 0; i < list.nodes.length(); ++i) {
        if (list.indexes_to_skip.contains(i)) continue;
        if (!translate_node(list.nodes[i], root, translated, next_index, key_reserve)) return false;
        ++next_index;
    }
    for (u64 i = 1; i < root.matrix_hierarchy.nodes.size(); ++i) {
        i32& parent_index = root.matrix_hierarchy.nodes[i].parent_index;
        if (parent_index == -1) parent_index = 0;
    }
    return true;
}

// `sample` is one of the sampler's two operations; `move_clock` brings the host to a time.
template<class SAMPLE, class MOVE>
bool walk_samples(const SAMPLE_RANGE& range, u32 node_count, SAMPLE sample, MOVE move_clock) {
    for (const MOMENT& moment : samples_of(range)) {
        move_clock(time_of_frame(moment.frame));
        for (u32 index = 1; index < node_count; ++index) {
            if (!sample(index, moment.number)) return false;
        }
    }
    return true;
}

bool sample_nodes(const NODE_LIST& list, VOR2& root, const SAMPLE_RANGE& range, bool update_view) {
    NODE_SAMPLER sampler(root, list.nodes);
    // A first node of this very scale brings a scene in inches to the host's centimetres.
    const bool scaled = host_matrix(list.nodes[0])(0, 0) == 2.54;
    const auto sample = [&](u32 index, double number) {
        return scaled ? sampler.sample_node_scaled(index, number, range.sample_at)
                      : sampler.sample_node(index, number, range.sample_at);
    };
    const u32 node_count = static_cast<u32>(root.matrix_hierarchy.nodes.size());
    if (update_view)
        return walk_samples(range, node_count, sample, [](const MTime& time) { MGlobal::viewFrame(time); });
    TIME_NODE_CLOCK clock;
    return walk_samples(range, node_count, sample, [&](const MTime& time) { clock.move_to(time); });
}

void turn_top_level_nodes(VOR2& root, VECTOR_3 world_origin_offset, bool rotate_180) {
    for (u32 i = 1; i < root.matrix_hierarchy.nodes.size(); ++i) {
        if (root.matrix_hierarchy.nodes[i].parent_index != 0) continue;
        offset_positions(root, i, world_origin_offset);
        axis_pass(root, i);
        if (rotate_180) rotate_180_pass(root, i);
        rotate_180_pass(root, i);
    }
}

/// The hierarchy's nodes that skins hang on.
std::set<u64> carrying_nodes(const NODE_LIST& list, const std::set<std::string>& paths) {
    std::set<u64> out;
    u64 index = 0;
    for (unsigned int i = 0; i < list.nodes.length(); ++i) {
        if (list.indexes_to_skip.contains(i)) continue;
        ++index;
        if (paths.contains(list.nodes[i].fullPathName().asChar())) out.insert(index);
    }
    return out;
}

/// What is a tenth of a millimetre or a hundredth of a degree at a bone adds up along a chain, and shows in what a skin
/// makes of it: `carrying` nodes keep every key.
void thin_out_keys(VOR2_MATRIX_HIERARCHY& hierarchy, const std::set<u64>& carrying) {
    for (u64 i = 0; i < hierarchy.nodes.size(); ++i) {
        VOR2_MATRIX_NODE& node = hierarchy.nodes[i];
        node.rotation_track->make_continuous();
        if (carrying.contains(i)) continue;
        reduce_vector_keys(*node.position_track);
        reduce_quaternion_keys(*node.rotation_track);
    }
}

// A scale of 0 leaves an axis without a direction, and shear leaves axes that no rotation has.
void warn_of_bad_rotations(const VOR2_MATRIX_HIERARCHY& hierarchy) {
    for (const VOR2_MATRIX_NODE& node : hierarchy.nodes) {
        bool lost = false, skewed = false;
        for (const QUATERNION& q : node.rotation_track->key_values()) {
            const f32 square = q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w;
            lost = lost || std::isnan(square);
            skewed = skewed || std::abs(square - 1.0F) > MOST_OFF_UNIT_SQUARE;
        }
        if (!lost && !skewed) continue;
        const char* what = lost ? "A scale of 0 leaves this node without a rotation: "
                                : "Shear leaves this node a rotation that isn't of unit length: ";
        MGlobal::displayWarning(MString(what) + to_host_text(node.name));
    }
}

bool fill_root(VOR2& root, const MString& path) {
    const EXPORT_SETTINGS& settings = export_settings();
    double fps = 0.0;
    SAMPLE_RANGE range;
    if (!current_fps(fps) || !plan_samples(settings, fps, range)) return false;
    fill_environment(root.environment, range);
    fill_file_info(root, path);
    insert_root(root.matrix_hierarchy, range);
    // Read before an origin node makes the time node the selection.
    MSelectionList selection = selection_for_export(settings.export_node_list);
    VECTOR_3 world_origin_offset = read_world_origin_offset(settings);

    NODE_LIST list = list_nodes(selection);
    if (list.nodes.length() == 0) {
        MGlobal::displayError("Nothing to export: no node of the hierarchy is selected or named");
        return false;
    }
    std::set<std::string> carrying;
    if (mesh_options().meshes && !add_bones(list, carrying)) return false;
    const std::size_t node_count = list.nodes.length() - list.indexes_to_skip.size();
    if (!check_key_count(range, static_cast<unsigned int>(node_count))) return false;
    // The walk over the range can take one sample more than the frames have.
    if (!translate_nodes(list, root, static_cast<u32>(range.frame_count) + 1)) return false;
    if (root.matrix_hierarchy.nodes.size() == 1)
        MGlobal::displayWarning("What is exported holds no joint and no transform");
    if (!sample_nodes(list, root, range, settings.update_view)) return false;

    if (settings.strip_namespace) strip_namespaces(root.matrix_hierarchy);
    std::swap(world_origin_offset.y, world_origin_offset.z);
    turn_top_level_nodes(root, world_origin_offset, settings.rotate_180);
    thin_out_keys(root.matrix_hierarchy, carrying_nodes(list, carrying));
    warn_of_bad_rotations(root.matrix_hierarchy);
    root.matrix_hierarchy.link_parents();
    return !mesh_options().meshes || export_meshes(root, list, range);
}

} // namespace

void strip_namespaces(VOR2_MATRIX_HIERARCHY& hierarchy) {
    for (VOR2_MATRIX_NODE& node : hierarchy.nodes) {
        const std::u16string_view name = node.name.view();
        const std::size_t colon = name.rfind(u':');
        if (colon == std::u16string_view::npos || colon + 1 == name.size()) continue;
        node.name = TEXT(name.substr(colon + 1));
    }
}

bool translate_scene(VOR2& root, const MString& path) {
    MGlobal::displayInfo("Building vor2 - translating nodes...");
    const MTime currentFrame = MAnimControl::currentTime();
    const bool filled = fill_root(root, path);
    MGlobal::viewFrame(currentFrame);
    return filled;
}

} // namespace VOR2_EXPORTER_MAYA
