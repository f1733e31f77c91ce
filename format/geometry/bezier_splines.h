#pragma once

/// Curves in space: chains of Bezier curves of up to third degree, with fixed control points or with
/// control points that are tracks.
///
/// Neighbouring curves share a control point, so that a chain of C cubics has 3 C + 1. The parameter t of
/// a chain runs from 0 to 1, and every curve takes an equal share of it, whatever its `length`. Beyond
/// both ends the first and the last curve go on by their formula. What can't be evaluated gives the zero
/// vector: a chain without curves, a curve of a degree above 3, and a curve whose control points aren't
/// all there. A control track that is absent counts as a point at the origin.

#include "format/scene/positional_object.h"

namespace VOR2_LOADER {

/// One curve of a chain. Its control points lie in the chain's list. 8 bytes in a file.
class VOR2_IBEZIER_CURVE : public RECORDED<VOR2_IBEZIER_CURVE, VOR2_SERIALISABLE_OBJECT> {
public:
    static constexpr u32 HIGHEST_DEGREE = 3;

    u32 degree = 0; ///< the curve has `degree` + 1 control points
    f32 length = 0; ///< as stored; nothing here works it out

    static constexpr auto record() {
        using C = VOR2_IBEZIER_CURVE;
        return RECORD("VOR2_IBEZIER_CURVE", value("degree", &C::degree), value("length", &C::length));
    }
    virtual VECTOR_3& position_at(VECTOR_3& out, f32 t) const = 0;
    /// A direction, not of unit length, and zero where t is 1.
    virtual VECTOR_3& tangent_at(VECTOR_3& out, f32 t) const = 0;
};

/// A curve whose class holds the span of its own control points, which is empty when there is nothing to
/// evaluate, and gives it as `controls`.
template<class SELF>
class BEZIER_CURVE : public RECORDED<SELF, VOR2_IBEZIER_CURVE> {
public:
    VECTOR_3& position_at(VECTOR_3& out, f32 t) const override;
    VECTOR_3& tangent_at(VECTOR_3& out, f32 t) const override;
};

class VOR2_RIGID_BEZIER_CURVE final : public BEZIER_CURVE<VOR2_RIGID_BEZIER_CURVE> {
public:
    std::span<const VECTOR_3> control_points; ///< of this curve, within `points` of its spline

    void link(std::span<const VECTOR_3> controls) noexcept { control_points = controls; }
    [[nodiscard]] std::span<const VECTOR_3> controls() const noexcept { return control_points; }
    static constexpr auto record() { return RECORD("VOR2_RIGID_BEZIER_CURVE", base<VOR2_IBEZIER_CURVE>()); }
};

class VOR2_ANIM_BEZIER_CURVE final : public BEZIER_CURVE<VOR2_ANIM_BEZIER_CURVE> {
public:
    using TRACKS = std::span<const OWNED<VOR2_ANIMATABLE_VECTOR_3>>;
    TRACKS control_tracks; ///< of this curve, within `point_tracks` of its spline

    void link(TRACKS controls) noexcept { control_tracks = controls; }
    [[nodiscard]] TRACKS controls() const noexcept { return control_tracks; }
    static constexpr auto record() { return RECORD("VOR2_ANIM_BEZIER_CURVE", base<VOR2_IBEZIER_CURVE>()); }
};

class VOR2_IBEZIER_SPLINE : public VOR2_SERIALISABLE_OBJECT {
public:
    virtual VECTOR_3& position_at(VECTOR_3& out, f32 t) const = 0;
    virtual VECTOR_3& tangent_at(VECTOR_3& out, f32 t) const = 0;
    /// The sum of the curves' stored lengths.
    [[nodiscard]] virtual f32 total_length() const = 0;
};

/// The curves of a chain, which always point into the chain's own list: `load` and copying see to it.
/// Who changes the list or the curves by hand calls `link_curves` afterwards.
template<class SELF, class CURVE>
class BEZIER_CHAIN : public VOR2_IBEZIER_SPLINE {
public:
    ARRAY<CURVE> curves;

    BEZIER_CHAIN() = default;
    BEZIER_CHAIN(const BEZIER_CHAIN& source) = default;
    BEZIER_CHAIN& operator=(const BEZIER_CHAIN& source) = default;
    BEZIER_CHAIN(BEZIER_CHAIN&&) noexcept = default;
    BEZIER_CHAIN& operator=(BEZIER_CHAIN&&) noexcept = default;
    ~BEZIER_CHAIN() override = default;

    void link_curves() noexcept;
    VECTOR_3& position_at(VECTOR_3& out, f32 t) const override;
    VECTOR_3& tangent_at(VECTOR_3& out, f32 t) const override;
    [[nodiscard]] f32 total_length() const override;

private:
    struct PLACE {
        const CURVE* curve;
        f32 t;
    };
    [[nodiscard]] PLACE find(f32 t) const;
};

class VOR2_RIGID_BEZIER_SPLINE final
    : public RECORDED<VOR2_RIGID_BEZIER_SPLINE, BEZIER_CHAIN<VOR2_RIGID_BEZIER_SPLINE, VOR2_RIGID_BEZIER_CURVE>> {
public:
    ARRAY<VECTOR_3> points;

    VOR2_RIGID_BEZIER_SPLINE() = default;
    VOR2_RIGID_BEZIER_SPLINE(const VOR2_RIGID_BEZIER_SPLINE& source);
    VOR2_RIGID_BEZIER_SPLINE& operator=(const VOR2_RIGID_BEZIER_SPLINE& source);
    VOR2_RIGID_BEZIER_SPLINE(VOR2_RIGID_BEZIER_SPLINE&&) noexcept = default;
    VOR2_RIGID_BEZIER_SPLINE& operator=(VOR2_RIGID_BEZIER_SPLINE&&) noexcept = default;
    ~VOR2_RIGID_BEZIER_SPLINE() override = default;

    bool load(VOR2_INPUT_BUFFER& buffer, f32 version) override;
    [[nodiscard]] std::span<const VECTOR_3> controls() const { return points.view(); }
    static constexpr auto record() {
        using C = VOR2_RIGID_BEZIER_SPLINE;
        return RECORD("VOR2_RIGID_BEZIER_SPLINE", values("points", &C::points), objects("curves", &C::curves));
    }
};

class VOR2_ANIM_BEZIER_SPLINE final
    : public ANIMATED_RECORD<VOR2_ANIM_BEZIER_SPLINE, BEZIER_CHAIN<VOR2_ANIM_BEZIER_SPLINE, VOR2_ANIM_BEZIER_CURVE>,
                             VOR2_INTERNAL_ANIM_OBJECT> {
public:
    OWNED_ARRAY<VOR2_ANIMATABLE_VECTOR_3> point_tracks;

    VOR2_ANIM_BEZIER_SPLINE() = default;
    VOR2_ANIM_BEZIER_SPLINE(const VOR2_ANIM_BEZIER_SPLINE& source);
    VOR2_ANIM_BEZIER_SPLINE& operator=(const VOR2_ANIM_BEZIER_SPLINE& source);
    VOR2_ANIM_BEZIER_SPLINE(VOR2_ANIM_BEZIER_SPLINE&&) noexcept = default;
    VOR2_ANIM_BEZIER_SPLINE& operator=(VOR2_ANIM_BEZIER_SPLINE&&) noexcept = default;
    ~VOR2_ANIM_BEZIER_SPLINE() override = default;

    bool load(VOR2_INPUT_BUFFER& buffer, f32 version) override;
    [[nodiscard]] VOR2_ANIM_BEZIER_CURVE::TRACKS controls() const { return point_tracks.view(); }
    static constexpr auto record() {
        using C = VOR2_ANIM_BEZIER_SPLINE;
        return RECORD("VOR2_ANIM_BEZIER_SPLINE", optionals("point_tracks", &C::point_tracks),
                      objects("curves", &C::curves));
    }
};

/// The clock moves its moving splines and passes over its own box track.
class VOR2_BEZIER_SPLINE_OBJECT
    : public ANIMATED_RECORD<VOR2_BEZIER_SPLINE_OBJECT, VOR2_POSITIONAL_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    ARRAY<VOR2_RIGID_BEZIER_SPLINE> rigid_splines;
    ARRAY<VOR2_ANIM_BEZIER_SPLINE> anim_splines;

    static constexpr u32 CHUNK_ID = 11;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_BEZIER_SPLINE_OBJECT;
        // A list counts as read whatever its elements gave.
        return RECORD("VOR2_BEZIER_SPLINE_OBJECT", base<VOR2_POSITIONAL_OBJECT>().not_walked(),
                      objects("rigid_splines", &C::rigid_splines).load_ignored(),
                      objects("anim_splines", &C::anim_splines).load_ignored());
    }
};

} // namespace VOR2_LOADER
