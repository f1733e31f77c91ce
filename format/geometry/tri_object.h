#pragma once

/// What all meshes share: something lit and positioned that has mapping channels, its vertices, and its
/// triangles in groups of one material each; and the plain mesh, `VOR2_RIGID`.
///
/// Vertices belong to the object and are shared by its groups. Whatever triangles and material numbers a
/// file holds is kept as read; who follows them checks them.

#include "format/geometry/vertices.h"
#include "format/materials/materials.h"
#include "format/scene/positional_object.h"

namespace VOR2_LOADER {

class VOR2_GEOM_OBJECT : public ANIMATED_RECORD<VOR2_GEOM_OBJECT, VOR2_POSITIONAL_OBJECT, VOR2_LIT_OBJECT> {
public:
    ARRAY<u32> mapping_channels; ///< entry i names the channel of entry i of every vertex's `uvs`
    /// A material of the object's own. It is copied, compared and moved by the clock, but no file holds it.
    OWNED<VOR2_MATERIAL> material;

    static constexpr auto record() {
        using C = VOR2_GEOM_OBJECT;
        return RECORD("VOR2_GEOM_OBJECT", base<VOR2_POSITIONAL_OBJECT>(), base<VOR2_LIT_OBJECT>(),
                      values("mapping_channels", &C::mapping_channels), not_stored(optional("material", &C::material)));
    }
};

/// The triangles of one material.
class VOR2_TRI_SUB_OBJECT : public RECORDED<VOR2_TRI_SUB_OBJECT, VOR2_SERIALISABLE_OBJECT> {
public:
    ARRAY<VOR2_CARD32_TRIPLE> triangles;
    u32 material_id = 0xFFFFFFFF; ///< index into the root's `materials`; all bits set means none

    static constexpr auto record() {
        using C = VOR2_TRI_SUB_OBJECT;
        return RECORD("VOR2_TRI_SUB_OBJECT", objects("triangles", &C::triangles),
                      value("material_id", &C::material_id));
    }
    /// Gives the new triangle's index in `triangles`.
    u32 add_triangle_index(const VOR2_CARD32_TRIPLE& triangle) {
        triangles.push_back(triangle);
        return static_cast<u32>(triangles.size() - 1);
    }
};

/// The vertices, which the concrete class holds, in their place in the record.
struct VERTICES_FIELD : FIELD_BESIDE<VERTICES_FIELD> {
    constexpr VERTICES_FIELD() : FIELD_BESIDE("vertices") {}
    template<class T>
    static bool load(T& self, VOR2_INPUT_BUFFER& buffer, f32 version) {
        return self.load_vertices(buffer, version);
    }
    template<class T>
    static bool save(const T& self, VOR2_WRITE_STREAM& stream) {
        return self.save_vertices(stream);
    }
    template<class T>
    static void describe(const T& self, RECORD_VISITOR& visitor) {
        self.describe_vertices(visitor);
    }
};

class VOR2_TRI_OBJECT : public ANIMATED_RECORD<VOR2_TRI_OBJECT, VOR2_GEOM_OBJECT> {
public:
    ARRAY<VOR2_TRI_SUB_OBJECT> sub_objects; ///< in the order in which their materials first occurred
    u32 object_word = 0;                    ///< kept and nothing else

    static constexpr auto record() {
        using C = VOR2_TRI_OBJECT;
        return RECORD("VOR2_TRI_OBJECT", base<VOR2_GEOM_OBJECT>(), VERTICES_FIELD(),
                      objects("sub_objects", &C::sub_objects), value("object_word", &C::object_word).save_ignored());
    }
    virtual bool load_vertices(VOR2_INPUT_BUFFER& buffer, f32 version) = 0;
    virtual bool save_vertices(VOR2_WRITE_STREAM& stream) const = 0;
    virtual void describe_vertices(RECORD_VISITOR& visitor) const = 0;
    [[nodiscard]] virtual u32 vertex_count() const = 0;
    /// `index` lies below `vertex_count`.
    [[nodiscard]] virtual const VOR2_VERT& vertex(u32 index) const = 0;

    /// Adds to the first group with that material. Where there is none yet, a new group is appended, with
    /// room for `expected_triangles`.
    void add_sub_object_triangle(const VOR2_CARD32_TRIPLE& triangle, u32 material_id, u32 expected_triangles);
};

/// A mesh with vertices of one class.
template<class SELF, class VERT, u32 ID>
class MESH : public ANIMATED_RECORD<SELF, VOR2_TRI_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    ARRAY<VERT> vertices;

    static constexpr u32 CHUNK_ID = ID;
    [[nodiscard]] u32 chunk_id() const override { return ID; }
    bool load_vertices(VOR2_INPUT_BUFFER& buffer, f32 version) override {
        SHARED_BLOCKS of_the_vertices_lists;
        return LIST_KIND<OBJECT_KIND>::load(vertices, buffer, version);
    }
    bool save_vertices(VOR2_WRITE_STREAM& stream) const override {
        return LIST_KIND<OBJECT_KIND>::save(vertices, stream);
    }
    void describe_vertices(RECORD_VISITOR& visitor) const override {
        LIST_KIND<OBJECT_KIND>::describe(vertices, "vertices", visitor);
    }
    [[nodiscard]] u32 vertex_count() const override { return static_cast<u32>(vertices.size()); }
    [[nodiscard]] const VOR2_VERT& vertex(u32 index) const override { return vertices[index]; }

    /// Adds a triangle with three new vertices, which it shares with no other, for the caller to fill in.
    /// The pointers hold until the next call.
    void add_triangle(VERT*& first, VERT*& second, VERT*& third, u32 material_id, u32 expected_triangles) {
        const u32 n = vertex_count();
        for (int i = 0; i < 3; ++i) vertices.emplace_back();
        first = &vertices[n];
        second = first + 1;
        third = first + 2;
        this->add_sub_object_triangle({n, n + 1, n + 2}, material_id, expected_triangles);
    }
};

/// The plain mesh; nothing moves its vertices.
class VOR2_RIGID : public MESH<VOR2_RIGID, VOR2_RIGID_VERT, 7> {
public:
    static constexpr auto record() {
        return RECORD("VOR2_RIGID", base<VOR2_TRI_OBJECT>(), not_stored(objects("vertices", &VOR2_RIGID::vertices)));
    }
};

} // namespace VOR2_LOADER
