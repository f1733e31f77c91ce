#pragma once

/// Where host nodes stand in the world of a file.

#include "host/export/mesh_placement.h"
#include "host/export/node_list.h"

#include "format/scene/root.h"

#include <map>
#include <string>

namespace VOR2_EXPORTER_MAYA {

/// The exported nodes by their indices in a hierarchy that is complete, and the file's world around them: it has the
/// host's axes as vertices have them, turned half around without `rotate_180`. It is the world of the uppermost
/// exported node's parent, moved to where that node's keys have it at the time at which this is made.
class FILE_WORLD {
public:
    /// The host's clock and the hierarchy's stand at the start of the range.
    FILE_WORLD(const VOR2& root, const NODE_LIST& list);

    [[nodiscard]] unsigned int count() const {
        return my_paths.length();
    } ///< the inserted root, without a path, included
    [[nodiscard]] const MDagPath& path(unsigned int index) const { return my_paths[index]; }
    /// The last place that a host node was given; -1 for none.
    [[nodiscard]] i32 index_of(const MDagPath& path) const;
    /// The uppermost exported node above one, which may be that one.
    [[nodiscard]] unsigned int top_of(unsigned int index) const;
    /// From a host matrix in the world to one in the file's, at the host's present time, by way of a node's uppermost.
    [[nodiscard]] AFFINE in_file(unsigned int top, const MMatrix& world) const;

private:
    MDagPathArray my_paths;
    std::vector<unsigned int> my_tops;
    std::map<std::string, i32> my_indices;  ///< by full path
    std::map<unsigned int, AFFINE> my_axes; ///< of the uppermost nodes
};

} // namespace VOR2_EXPORTER_MAYA
