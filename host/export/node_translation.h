#pragma once

#include "format/scene/root.h"
#include "format/tracks/tracks.h"

#include <maya/MDagPath.h>
#include <maya/MDagPathArray.h>
#include <maya/MFnTransform.h>
#include <maya/MMatrix.h>

#include <deque>
#include <unordered_map>
#include <vector>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// Which place in the hierarchy a host node was given; of several places, the last.
class HIERARCHY_INDEX {
public:
    void add(const MDagPath& path, i32 index);
    /// -1 for a node that has none.
    [[nodiscard]] i32 find(const MDagPath& path) const;

private:
    struct ENTRY {
        MDagPath path;
        i32 index;
    };
    /// By the hash of the whole path: a node that is instanced has as many entries as places.
    std::unordered_map<std::size_t, std::vector<ENTRY>> my_entries;
};

/// Gives the host node a place in the hierarchy, which grows to hold it: its name with its namespaces,
/// two new tracks with room for `key_reserve` keys, and as parent the last place that the node's parent
/// was given before, -1 when it has none. So a parent always stands before its children, also when a
/// node is exported twice. Always true.
[[nodiscard]] bool translate_node(const MDagPath& path, VOR2& root, HIERARCHY_INDEX& translated, i32 index,
                                  u32 key_reserve);

/// Adds keys to the nodes of a hierarchy, sample by sample, in time linear in the keys. The host node
/// that a hierarchy node follows is found by name, once: the last of `nodes` that bears it. So of two
/// host nodes with one name both places get the later one's motion.
class NODE_SAMPLER {
public:
    /// Node 0 is passed over: no sample touches it.
    NODE_SAMPLER(VOR2& root, const MDagPathArray& nodes);

    /// Adds the node's position and rotation at the host's present time, at `sample` / `sample_at` seconds.
    /// False, with a message, for a transform that isn't finite; nothing is added then.
    [[nodiscard]] bool sample_node(u32 index, double sample, double sample_at);
    /// The same with positions 2.54 times as far.
    [[nodiscard]] bool sample_node_scaled(u32 index, double sample, double sample_at);

private:
    struct FOLLOWED {
        const MFnTransform* transform = nullptr;
        VOR2_ANIMATABLE_VECTOR_3* positions = nullptr;
        VOR2_ANIMATABLE_QUATERNION* rotations = nullptr;
    };
    using CONVERSION = MATRIX_3X4 (*)(const MMatrix&);
    [[nodiscard]] bool add_sample(const FOLLOWED& node, CONVERSION convert, double sample, double sample_at);

    std::deque<MFnTransform> my_transforms; ///< function sets can't be moved
    std::vector<FOLLOWED> my_nodes;         ///< by hierarchy index
};

} // namespace VOR2_EXPORTER_MAYA
