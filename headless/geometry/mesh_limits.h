#pragma once

#include <cstddef>
#include <cstdint>

namespace headless {

/// Bounds on meshes: a few words in a scene may ask for any number of points. What goes beyond one is noted at the
/// mesh. Corners count again for each set of UVs or colours that they have a place in.
struct MeshLimits {
    /// Points of one primitive; one that would have more has none.
    static inline std::int64_t primitive_points = 1'000'000;
    /// Corners of a mesh after it was divided; further divisions are left out.
    static inline std::size_t divided_corners = 4'000'000;
    /// Corners of all meshes that come of a history, and so don't stand in the scene's file; a mesh with which there
    /// would be more is empty.
    static inline std::size_t made_corners = 32'000'000;
    /// UV sets of one mesh, and colour sets; the others are left out.
    static constexpr std::size_t sets = 64;
};

/// What one mesh has of `MeshLimits::made_corners`.
class MadeCorners {
public:
    MadeCorners() = default;
    ~MadeCorners() { taken_ -= mine_; }
    MadeCorners(const MadeCorners&) = delete;
    MadeCorners& operator=(const MadeCorners&) = delete;

    /// Takes so many in the place of those that it has. False, with none, where there aren't so many left.
    bool take(std::size_t count) {
        taken_ -= mine_;
        mine_ = count <= MeshLimits::made_corners && taken_ <= MeshLimits::made_corners - count ? count : 0;
        taken_ += mine_;
        return mine_ == count;
    }

private:
    static inline std::size_t taken_ = 0; // by all: the host runs on one thread
    std::size_t mine_ = 0;
};

} // namespace headless
