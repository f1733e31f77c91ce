#pragma once

/// Of what every mesh is built: the interface of all vertices, the plain vertex, and the triangle.

#include "format/core/value_records.h"

namespace VOR2_LOADER {

/// The one interface through which all kinds of vertices are read. A getter writes to its argument; where
/// a vertex has no such value the argument keeps what it held. No getter looks at an index: callers stay
/// below the count that the matching count getter gives.
class VOR2_VERT : public VOR2_SERIALISABLE_OBJECT {
public:
    virtual void get_position(VECTOR_3& out) const = 0;
    virtual void get_normal(VECTOR_3& out) const = 0;
    virtual void get_colour(VOR2_COLOUR& out) const = 0;
    virtual void get_uv_count(u32& out) const = 0;
    virtual void get_uv(u32 index, VECTOR_3& out) const = 0;
    virtual void get_binormal_tangent_count(u32& out) const = 0;
    virtual void get_binormal_tangent(u32 index, VOR2_BINORMAL_TANGENT& out) const = 0;
    /// A deep copy of the same class.
    [[nodiscard]] virtual OWNED<VOR2_VERT> clone() const = 0;
};

/// A vertex with its values stored. All vertices of one object are expected to hold as many `uvs` as the
/// object has `mapping_channels`; nothing enforces it, nor that a normal has unit length.
class VOR2_RIGID_VERT : public RECORDED<VOR2_RIGID_VERT, VOR2_VERT> {
public:
    VECTOR_3 position{0.0F, 0.0F, 0.0F}; ///< metres, in the object's space
    VECTOR_3 normal{0.0F, 0.0F, 0.0F};
    VOR2_COLOUR colour;
    ARRAY<VECTOR_3> uvs; ///< entry i belongs to entry i of the object's `mapping_channels`; z is W
    ARRAY<VOR2_BINORMAL_TANGENT> binormal_tangents;

    static constexpr auto record() {
        using C = VOR2_RIGID_VERT;
        return RECORD("VOR2_RIGID_VERT", value("position", &C::position), value("normal", &C::normal),
                      object("colour", &C::colour), values("uvs", &C::uvs),
                      objects("binormal_tangents", &C::binormal_tangents).since(1.03F));
    }
    void get_position(VECTOR_3& out) const override { out = position; }
    void get_normal(VECTOR_3& out) const override { out = normal; }
    void get_colour(VOR2_COLOUR& out) const override { out = colour; }
    void get_uv_count(u32& out) const override { out = static_cast<u32>(uvs.size()); }
    void get_uv(u32 index, VECTOR_3& out) const override { out = uvs[index]; }
    void get_binormal_tangent_count(u32& out) const override { out = static_cast<u32>(binormal_tangents.size()); }
    void get_binormal_tangent(u32 index, VOR2_BINORMAL_TANGENT& out) const override { out = binormal_tangents[index]; }
    [[nodiscard]] OWNED<VOR2_VERT> clone() const override { return OWNED<VOR2_VERT>(new VOR2_RIGID_VERT(*this)); }
};

/// One triangle: indices into the vertices of the owning object. Kept as read, also where there is no
/// such vertex. 12 bytes.
class VOR2_CARD32_TRIPLE : public RECORDED<VOR2_CARD32_TRIPLE, VOR2_SERIALISABLE_OBJECT> {
public:
    u32 first = 0, second = 0, third = 0;

    VOR2_CARD32_TRIPLE() = default;
    VOR2_CARD32_TRIPLE(u32 a, u32 b, u32 c) noexcept : first(a), second(b), third(c) {}
    static constexpr auto record() {
        using C = VOR2_CARD32_TRIPLE;
        return RECORD("VOR2_CARD32_TRIPLE", value("first", &C::first), value("second", &C::second),
                      value("third", &C::third));
    }
};

} // namespace VOR2_LOADER
