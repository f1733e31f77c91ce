#include "format/geometry/tri_clipper.h"

#include "support/platform/thread_pointer.h"

#include <algorithm>
#include <memory>
#include <new>

namespace VOR2_LOADER {
namespace {

using VERT = VOR2_TRI_CLIPPER_RIGID_VERT;

constexpr u32 BELOW_MIN_X = 1, BELOW_MIN_Z = 2, ABOVE_MAX_X = 4, ABOVE_MAX_Z = 8;

struct RECTANGLE {
    f32 min_x, min_z, max_x, max_z;

    [[nodiscard]] u32 outcode(VECTOR_3 p) const {
        const u32 x = p.x < min_x ? BELOW_MIN_X : p.x > max_x ? ABOVE_MAX_X : 0;
        const u32 z = p.z < min_z ? BELOW_MIN_Z : p.z > max_z ? ABOVE_MAX_Z : 0;
        return x | z;
    }
};

/// The pass for one edge of the rectangle.
struct EDGE {
    u32 bit;
    f32 limit;
    f32 VECTOR_3::*coordinate;
    u32 later_bits; ///< those of the edges still to come, which a new vertex keeps
};

template<class VALUE>
VALUE between(const VALUE& a, const VALUE& b, f32 t) {
    return a + (b - a) * t;
}

template<class VALUE>
void blend_lists(const ARRAY<VALUE>& a, const ARRAY<VALUE>& b, ARRAY<VALUE>& out, auto blend) {
    out.clear();
    out.reserve(a.size());
    for (u64 i = 0; i < a.size(); ++i) out.push_back(i < b.size() ? blend(a[i], b[i]) : a[i]);
}

class CLIPPER {
public:
    void begin() {
        my_used = 0;
        my_free = nullptr;
        my_head = nullptr;
    }
    bool add(const VERT& vertex) {
        if (my_used == MOST_CLIP_VERTICES) return false;
        static_cast<VOR2_RIGID_VERT&>(my_pool[my_used]) = vertex;
        my_pool[my_used].clip_position = vertex.clip_position;
        ++my_used;
        return true;
    }
    bool clip(const RECTANGLE& rectangle, VERT*& first);

private:
    [[nodiscard]] bool link_and_test(u32& any, u32& all);
    void link_free_list();
    bool pass(const EDGE& edge);
    [[nodiscard]] VERT* cut(const EDGE& edge, const VERT& a, VERT& b, bool last);

    static constexpr u32 POOL_SIZE = 12;
    VERT my_pool[POOL_SIZE];
    u32 my_used = 0;
    VERT* my_free = nullptr;
    VERT* my_head = nullptr;
    RECTANGLE my_rectangle{};
    bool my_pool_is_used_up = false;
};

bool CLIPPER::link_and_test(u32& any, u32& all) {
    any = 0;
    all = ~0U;
    for (u32 i = 0; i < my_used; ++i) {
        VERT& vertex = my_pool[i];
        vertex.clip_flags = my_rectangle.outcode(vertex.clip_position);
        vertex.next = i + 1 < my_used ? &vertex + 1 : nullptr;
        any |= vertex.clip_flags;
        all &= vertex.clip_flags;
    }
    return my_used > 0 && all == 0;
}

void CLIPPER::link_free_list() {
    for (u32 i = my_used; i < POOL_SIZE; ++i) my_pool[i].next = i + 1 < POOL_SIZE ? &my_pool[i + 1] : nullptr;
    my_free = &my_pool[my_used];
    my_head = &my_pool[0];
    my_pool_is_used_up = false;
}

bool CLIPPER::clip(const RECTANGLE& rectangle, VERT*& first) {
    my_rectangle = rectangle;
    first = nullptr;
    u32 any = 0;
    u32 all = 0;
    if (!link_and_test(any, all)) return true;
    if (any == 0) {
        first = &my_pool[0];
        return false;
    }
    link_free_list();
    const EDGE edges[] = {
        {BELOW_MIN_X, rectangle.min_x, &VECTOR_3::x, BELOW_MIN_Z | ABOVE_MAX_Z},
        {BELOW_MIN_Z, rectangle.min_z, &VECTOR_3::z, ABOVE_MAX_X},
        {ABOVE_MAX_X, rectangle.max_x, &VECTOR_3::x, ABOVE_MAX_Z},
        {ABOVE_MAX_Z, rectangle.max_z, &VECTOR_3::z, 0},
    };
    for (const EDGE& edge : edges) {
        if ((any & edge.bit) != 0 && !pass(edge)) return true;
    }
    first = my_head;
    return true;
}

/// Takes a free vertex and makes it the point where the line from `a` to `b` meets the edge. `last` says
/// that it ends the list; otherwise `b` follows it. With no vertex left it gives `b`, and the pass fails.
VERT* CLIPPER::cut(const EDGE& edge, const VERT& a, VERT& b, bool last) {
    if (my_free == nullptr) {
        my_pool_is_used_up = true;
        return &b;
    }
    VERT& made = *my_free;
    my_free = made.next;
    const f32 from = a.clip_position.*edge.coordinate;
    const f32 t = (edge.limit - from) / (b.clip_position.*edge.coordinate - from);
    made.clip_position = between(a.clip_position, b.clip_position, t);
    made.clip_position.*edge.coordinate = edge.limit;
    made.position = between(a.position, b.position, t);
    made.normal = between(a.normal, b.normal, t).normalised();
    made.colour = between(a.colour, b.colour, t);
    blend_lists(a.uvs, b.uvs, made.uvs, [t](VECTOR_3 from_a, VECTOR_3 to_b) { return between(from_a, to_b, t); });
    blend_lists(a.binormal_tangents, b.binormal_tangents, made.binormal_tangents,
                [t](const VOR2_BINORMAL_TANGENT& from_a, const VOR2_BINORMAL_TANGENT& to_b) {
                    const VOR2_BINORMAL_TANGENT pair = between(from_a, to_b, t);
                    return VOR2_BINORMAL_TANGENT(pair.binormal.normalised(), pair.tangent.normalised());
                });
    made.clip_flags = my_rectangle.outcode(made.clip_position) & edge.later_bits;
    made.next = last ? nullptr : &b;
    return &made;
}

/// Cuts the polygon at one edge. False when nothing remains.
bool CLIPPER::pass(const EDGE& edge) {
    const auto is_outside = [&edge](const VERT& vertex) { return (vertex.clip_flags & edge.bit) != 0; };
    VERT* const first = my_head;
    VERT* current = first;
    VERT* previous = nullptr;
    while (is_outside(*current)) {
        previous = current;
        current = current->next;
        if (current == nullptr) return false;
    }
    if (previous != nullptr) my_head = cut(edge, *previous, *current, false);
    VERT* tail = current;
    bool outside = false;
    for (bool finished = false; !finished && !my_pool_is_used_up;) {
        previous = current;
        if (current->next != nullptr) {
            current = current->next;
        } else {
            if (outside && is_outside(*first)) {
                tail->next = nullptr;
                break;
            }
            current = first;
            finished = true;
        }
        if (!is_outside(*current)) {
            if (outside) tail->next = cut(edge, *previous, *current, finished);
            outside = false;
            tail = current;
        } else if (!outside) {
            tail->next = cut(edge, *previous, *current, finished);
            tail = tail->next;
            outside = true;
        }
    }
    return !my_pool_is_used_up;
}

CLIPPER& thread_clipper() {
    static platform::THREAD_POINTER own([](void* clipper) { delete static_cast<CLIPPER*>(clipper); });
    if (void* clipper = own.get(); clipper != nullptr) return *static_cast<CLIPPER*>(clipper);
    auto clipper = std::make_unique<CLIPPER>();
    if (!own.set(clipper.get())) throw std::bad_alloc();
    return *clipper.release();
}

} // namespace

void clip_begin() {
    thread_clipper().begin();
}

bool clip_add_vertex(const VOR2_TRI_CLIPPER_RIGID_VERT& vertex) {
    return thread_clipper().add(vertex);
}

bool clip_to_rectangle(f32 min_x, f32 min_z, f32 max_x, f32 max_z, VOR2_TRI_CLIPPER_RIGID_VERT*& first) {
    return thread_clipper().clip({min_x, min_z, max_x, max_z}, first);
}

} // namespace VOR2_LOADER
