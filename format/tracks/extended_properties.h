#pragma once

#include "format/tracks/named_animatable.h"

namespace VOR2_LOADER {

/// A name paired with a list of texts.
class VOR2_NAMED_STRING_ARRAY : public RECORDED<VOR2_NAMED_STRING_ARRAY, VOR2_ENTITY> {
public:
    ARRAY<TEXT> strings;

    static constexpr auto record() {
        return RECORD("VOR2_NAMED_STRING_ARRAY", base<VOR2_ENTITY>(),
                      texts("strings", &VOR2_NAMED_STRING_ARRAY::strings));
    }
};

/// The bag in which a node, a positional object or a material keeps values that the format doesn't know
/// by name. Its tracks don't follow the clock. Two bags are equal when their lists hold the same names
/// in the same order, and the texts agree: the tracks take no part.
class VOR2_EXTENDED_PROPERTIES : public RECORDED<VOR2_EXTENDED_PROPERTIES, VOR2_SERIALISABLE_OBJECT> {
public:
    ARRAY<VOR2_NAMED_STRING_ARRAY> string_arrays;
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_INT32>> int_properties;
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_FLOAT32>> float_properties;
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_VECTOR_3>> vector_3_properties;
    ARRAY<VOR2_NAMED_ANIMATABLE<VOR2_ANIMATABLE_VECTOR_4>> vector_4_properties;

    static constexpr auto record() {
        using C = VOR2_EXTENDED_PROPERTIES;
        // A list counts as read whatever its elements gave.
        return RECORD("VOR2_EXTENDED_PROPERTIES", objects("string_arrays", &C::string_arrays).load_ignored(),
                      objects("int_properties", &C::int_properties).load_ignored(),
                      objects("float_properties", &C::float_properties).load_ignored(),
                      objects("vector_3_properties", &C::vector_3_properties).load_ignored(),
                      objects("vector_4_properties", &C::vector_4_properties).load_ignored());
    }
};

} // namespace VOR2_LOADER
