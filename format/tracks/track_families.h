#pragma once

/// The families of tracks: one abstract class for each type of value. Holders declare their tracks by
/// family and so accept any kind of it. `make_track` of a family turns the type number of a file into
/// an empty track, or gives nothing for a number that isn't the family's.
///
/// The operations behind `value` change the key values and leave times and cursor alone.

#include "format/core/value_records.h"
#include "format/tracks/animatable.h"

namespace VOR2_LOADER {

/// Key values and what needs no more than their type. `VALUES_COUNT` says whether the values' own
/// writes reach the result of `save`.
template<class FAMILY, class VALUE, bool VALUES_COUNT = true>
class TRACK_FAMILY : public VOR2_ANIMATABLE {
public:
    using VALUE_TYPE = VALUE;
    using VALUES_KIND = LIST_KIND<std::conditional_t<HAS_RECORD<VALUE>, OBJECT_KIND, VALUE_KIND>, VALUES_COUNT>;

    bool load(VOR2_INPUT_BUFFER& buffer, f32 version) final {
        const bool head = VOR2_ANIMATABLE::load(buffer, version);
        return VALUES_KIND::load(my_key_values, buffer, version) && head;
    }
    bool save(VOR2_WRITE_STREAM& stream) const final {
        const bool head = VOR2_ANIMATABLE::save(stream);
        return VALUES_KIND::save(my_key_values, stream) && head;
    }
    void describe(RECORD_VISITOR& visitor) const final {
        VOR2_ANIMATABLE::describe(visitor);
        VALUES_KIND::describe(my_key_values, "key_values", visitor);
    }
    [[nodiscard]] bool equals(const VOR2_ANIMATABLE& other) const final {
        if (other.type_id() != type_id() || !times_equal(other)) return false;
        return VALUES_KIND::equal(my_key_values, static_cast<const TRACK_FAMILY&>(other).my_key_values);
    }
    [[nodiscard]] virtual OWNED<FAMILY> clone() const = 0;

    [[nodiscard]] ARRAY<VALUE>& key_values() noexcept { return my_key_values; }
    [[nodiscard]] const ARRAY<VALUE>& key_values() const noexcept { return my_key_values; }
    /// Appends; neither sorts nor moves the cursor.
    void add_key(const VALUE& value, f32 time) {
        add_key_time(time);
        my_key_values.push_back(value);
    }

protected:
    /// The one key, or what `mix` makes of the two at the cursor; `nothing` for a track without values.
    template<class MIX>
    [[nodiscard]] VALUE at_cursor(const VALUE& nothing, MIX mix) const {
        if (my_key_values.size() == 1) return my_key_values[0];
        if (my_key_values.empty()) return nothing;
        const auto [from, to] = interval(my_key_values.size());
        return mix(my_key_values[from], my_key_values[to], cursor_fraction());
    }

private:
    ARRAY<VALUE> my_key_values;
};

class VOR2_ANIMATABLE_FLOAT32 : public TRACK_FAMILY<VOR2_ANIMATABLE_FLOAT32, f32, false> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_FLOAT32> make_track(u32 type_id);
    [[nodiscard]] virtual f32 value() const = 0;
    virtual VOR2_ANIMATABLE_FLOAT32& add(f32 value) = 0;
    virtual VOR2_ANIMATABLE_FLOAT32& subtract(f32 value) = 0;
    virtual VOR2_ANIMATABLE_FLOAT32& multiply(f32 factor) = 0;
    virtual VOR2_ANIMATABLE_FLOAT32& divide(f32 divisor) = 0;
};

/// Integers that change in steps; they can't be offset or scaled, so the operations behind `value` have
/// no effect.
class VOR2_ANIMATABLE_INT32 : public TRACK_FAMILY<VOR2_ANIMATABLE_INT32, i32, false> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_INT32> make_track(u32 type_id);
    [[nodiscard]] virtual i32 value() const = 0;
    virtual VOR2_ANIMATABLE_INT32& add(i32 value) = 0;
    virtual VOR2_ANIMATABLE_INT32& subtract(i32 value) = 0;
    virtual VOR2_ANIMATABLE_INT32& multiply(i32 factor) = 0;
    virtual VOR2_ANIMATABLE_INT32& divide(i32 divisor) = 0;
};

/// The families of values with several numbers that add and scale.
template<class FAMILY, class VALUE>
class ARITHMETIC_TRACK_FAMILY : public TRACK_FAMILY<FAMILY, VALUE> {
public:
    virtual VALUE& value(VALUE& out) const = 0;
    virtual FAMILY& add(const VALUE& value) = 0;
    virtual FAMILY& subtract(const VALUE& value) = 0;
    virtual FAMILY& multiply(f32 factor) = 0;
    /// By zero gives infinities.
    virtual FAMILY& divide(f32 divisor) = 0;
};

class VOR2_ANIMATABLE_VECTOR_2 : public ARITHMETIC_TRACK_FAMILY<VOR2_ANIMATABLE_VECTOR_2, VECTOR_2> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_VECTOR_2> make_track(u32 type_id);
};
class VOR2_ANIMATABLE_VECTOR_3 : public ARITHMETIC_TRACK_FAMILY<VOR2_ANIMATABLE_VECTOR_3, VECTOR_3> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_VECTOR_3> make_track(u32 type_id);
};
class VOR2_ANIMATABLE_VECTOR_4 : public ARITHMETIC_TRACK_FAMILY<VOR2_ANIMATABLE_VECTOR_4, VECTOR_4> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_VECTOR_4> make_track(u32 type_id);
};
class VOR2_ANIMATABLE_RECTF : public ARITHMETIC_TRACK_FAMILY<VOR2_ANIMATABLE_RECTF, VOR2_RECTF> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_RECTF> make_track(u32 type_id);
};
/// `multiply` scales each key about its own centre. `value` blends the two corners and gives exactly
/// the later key at fraction 1.
class VOR2_ANIMATABLE_BOUNDING_BOX : public ARITHMETIC_TRACK_FAMILY<VOR2_ANIMATABLE_BOUNDING_BOX, VOR2_BOUNDING_BOX> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_BOUNDING_BOX> make_track(u32 type_id);
};

class VOR2_ANIMATABLE_COLOUR : public TRACK_FAMILY<VOR2_ANIMATABLE_COLOUR, VOR2_COLOUR> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_COLOUR> make_track(u32 type_id);
    virtual VOR2_COLOUR& value(VOR2_COLOUR& out) const = 0;
    virtual VOR2_ANIMATABLE_COLOUR& add(const VOR2_COLOUR& value) = 0;
    virtual VOR2_ANIMATABLE_COLOUR& subtract(const VOR2_COLOUR& value) = 0;
    /// Component by component.
    virtual VOR2_ANIMATABLE_COLOUR& multiply(const VOR2_COLOUR& factors) = 0;
    virtual VOR2_ANIMATABLE_COLOUR& scale(f32 factor) = 0;
};

class VOR2_ANIMATABLE_FLOAT32_RANGE : public TRACK_FAMILY<VOR2_ANIMATABLE_FLOAT32_RANGE, VOR2_FLOAT32_RANGE> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_FLOAT32_RANGE> make_track(u32 type_id);
    virtual VOR2_FLOAT32_RANGE& value(VOR2_FLOAT32_RANGE& out) const = 0;
    virtual VOR2_ANIMATABLE_FLOAT32_RANGE& add(const VOR2_FLOAT32_RANGE& value) = 0;
    virtual VOR2_ANIMATABLE_FLOAT32_RANGE& subtract(const VOR2_FLOAT32_RANGE& value) = 0;
};

/// The blended vectors aren't of unit length: who needs that calls `normalise_pair`.
class VOR2_ANIMATABLE_BINORMAL_TANGENT : public TRACK_FAMILY<VOR2_ANIMATABLE_BINORMAL_TANGENT, VOR2_BINORMAL_TANGENT> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_BINORMAL_TANGENT> make_track(u32 type_id);
    virtual VOR2_BINORMAL_TANGENT& value(VOR2_BINORMAL_TANGENT& out) const = 0;
};

/// Rotations as unit quaternions. `value` takes no shortest path: the signs of the keys decide which
/// way the rotation turns, and `make_continuous` settles them.
class VOR2_ANIMATABLE_QUATERNION : public TRACK_FAMILY<VOR2_ANIMATABLE_QUATERNION, QUATERNION> {
public:
    [[nodiscard]] static OWNED<VOR2_ANIMATABLE_QUATERNION> make_track(u32 type_id);
    virtual QUATERNION& value(QUATERNION& out) const = 0;
    /// Replaces every key k by k times `q`.
    virtual VOR2_ANIMATABLE_QUATERNION& rotate(QUATERNION q) = 0;
    /// Negates each key whose dot product with the key before it, as changed, is below 0. The first key
    /// never changes; the poses stay the same and the paths between them get short.
    virtual void make_continuous() = 0;
};

} // namespace VOR2_LOADER
