#pragma once

/// Holds what a file poses to what the host shows.

#include "host/export/file_world.h"
#include "host/export/sample_range.h"

#include <maya/MDagPath.h>

#include <vector>

namespace VOR2_EXPORTER_MAYA {

/// Skins and blend shapes reach the file by way of their own numbers, not of the points that they give: at a few
/// moments of the range the file's vertices are held to those points. What comes out elsewhere is said; nothing else
/// would tell that a rig does something here that the file's own skinning doesn't.
class POSE_CHECK {
public:
    POSE_CHECK(const FILE_WORLD& world, const SAMPLE_RANGE& range);

    /// A mesh that the file has whole: it will be the root's next weighted mesh, or next morph mesh, at the node with
    /// that index in the host's list. `point_of` has the host's point for each vertex.
    void watch_skin(const MDagPath& shape, unsigned int index, const std::vector<u32>& point_of);
    void watch_morph(const MDagPath& shape, unsigned int index, const std::vector<u32>& point_of);
    /// A mesh of that kind that isn't the host's in all it does.
    void pass_skin() { ++my_skins; }
    void pass_morph() { ++my_morphs; }

    /// Once for each sample, in order; the host's clock stands there.
    void sample();
    /// A warning for each watched mesh that the root poses more than 1e-3 of its size away from the host's.
    void tell(const VOR2& root) const;

private:
    struct WATCHED {
        MDagPath shape;
        unsigned int top = 0;
        bool is_skin = false;
        u64 place = 0; ///< in the root's list
        std::vector<u32> point_of;
        std::vector<std::vector<VECTOR_3>> points; ///< at each moment, of the host's points, in the file's world
    };
    struct WORST {
        double share = 0.0, frame = 0.0;
    };
    void watch(const MDagPath& shape, unsigned int index, const std::vector<u32>& point_of, bool is_skin, u64 place);
    [[nodiscard]] WORST worst(const WATCHED& watched, VOR2& probe) const;

    const FILE_WORLD& my_world;
    const SAMPLE_RANGE& my_range;
    std::vector<MOMENT> my_moments;    ///< of the samples, those that are looked at
    std::vector<std::size_t> my_turns; ///< which samples these are
    std::size_t my_sample = 0;
    u64 my_skins = 0, my_morphs = 0;
    std::vector<WATCHED> my_watched;
};

} // namespace VOR2_EXPORTER_MAYA
