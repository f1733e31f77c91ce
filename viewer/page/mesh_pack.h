#pragma once

/// The meshes of a page: vertices that are alike in everything stand there once, whatever the file holds.

#include "format/vor2.h"
#include "inspect/json_writer.h"
#include "viewer/page/track_table.h"

#include <map>

namespace vor2::viewer {

class MeshPack {
public:
    MeshPack(WordBlock& block, TrackTable& tracks, inspect::JsonWriter& json)
        : block_(block), tracks_(tracks), json_(json) {}

    /// An object for each mesh of the scene, in the order of the root's lists.
    void write_all(const VOR2_LOADER::VOR2& scene);

    /// Where the mesh stands among all of the page; -1 for none there. `list` is a list of the root: "rigids".
    int number_of(std::string_view list, u64 index) const;
    u64 bad_triangles() const { return bad_triangles_; }

private:
    template<class MESH>
    void write_list(std::string_view list, const VOR2_LOADER::OWNED_ARRAY<MESH>& meshes);
    template<class MESH>
    void write_mesh(std::string_view list, u64 index, const MESH& mesh);
    void write_groups(const VOR2_LOADER::VOR2_TRI_OBJECT& mesh, const std::vector<u32>& place_of);
    void write_span(std::string_view key, WordSpan span);

    void write_vertices(const VOR2_LOADER::VOR2_RIGID& mesh, std::vector<u32>& place_of);
    void write_vertices(const VOR2_LOADER::VOR2_WEIGHTED_MESH& mesh, std::vector<u32>& place_of);
    void write_vertices(const VOR2_LOADER::VOR2_MORPH_MESH& mesh, std::vector<u32>& place_of);
    void write_vertices(const VOR2_LOADER::VOR2_ANIM_MESH& mesh, std::vector<u32>& place_of);
    template<class VERTICES, class PLACE, class EXTRA>
    std::vector<std::vector<u32>> write_plain_vertices(const VERTICES& vertices, std::vector<u32>& place_of,
                                                       PLACE place, EXTRA extra, u32 extra_width);

    WordBlock& block_;
    TrackTable& tracks_;
    inspect::JsonWriter& json_;
    std::map<std::pair<std::string, u64>, int> numbers_;
    int count_ = 0;
    u64 bad_triangles_ = 0;
};

} // namespace vor2::viewer
