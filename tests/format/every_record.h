#pragma once

/// Files that hold every record there is, written by hand, in the layout of any version.

#include "tests/format/bytes.h"

#include <array>
#include <cmath>
#include <vector>

namespace VOR2_LOADER {

/// Writes records in the layout of version `layout`. `source` is the version of the file that the values
/// came from: what that file didn't hold stands at its default. So {v, v} writes a file of version v, and
/// {1.16, v} what the library makes of it.
struct EVERY_RECORD {
    f32 layout, source;
    bool full = true; ///< whether optional things are there
    u32 length = 2;   ///< of lists
    bool references = false;
    std::u16string_view referenced = u"C:\\none.vr2";

    /// Whether the layout has a field that came with `version`, and whether its value is known.
    [[nodiscard]] bool has(f32 version) const { return layout >= version; }
    [[nodiscard]] bool knows(f32 version) const { return source >= version; }

    [[nodiscard]] BYTES track(u32 type, u32 width, f32 fraction = 0.25F) const {
        BYTES out;
        if (!full) return out.words({0});
        out.words({1, type, 0}).floats({fraction}).words({2}).floats({0, 1}).words({2});
        for (u32 i = 0; i < 2 * width; ++i) out.floats({static_cast<f32>(i) + 0.5F});
        return out;
    }
    [[nodiscard]] BYTES float_track() const { return track(0, 1); }
    [[nodiscard]] BYTES range_track() const { return track(1, 2); }
    [[nodiscard]] BYTES colour_track() const { return track(2, 4); }
    [[nodiscard]] BYTES vector_3_track() const { return track(3, 3); }
    [[nodiscard]] BYTES vector_2_track() const { return track(4, 2); }
    [[nodiscard]] BYTES int_track() const { return track(8, 1); }
    [[nodiscard]] BYTES box_track() const { return track(11, 6); }
    [[nodiscard]] BYTES nothing(u32 words) const {
        BYTES out;
        for (u32 i = 0; i < words; ++i) out.words({0});
        return out;
    }
    /// A count and that many copies.
    [[nodiscard]] BYTES list(const BYTES& element) const {
        BYTES out;
        out.words({length});
        for (u32 i = 0; i < length; ++i) out.bytes(element);
        return out;
    }
    [[nodiscard]] BYTES numbers() const { return list(BYTES().words({0xFFFFFFFF})); }
    [[nodiscard]] BYTES named(const BYTES& value) const { return BYTES().text(u"na\u00efve \u4e2d").bytes(value); }

    [[nodiscard]] BYTES properties() const {
        const BYTES strings = list(BYTES().text(u"\u65e5\u672c"));
        return list(named(strings))
            .bytes(list(named(int_track())))
            .bytes(list(named(float_track())))
            .bytes(list(named(vector_3_track())))
            .bytes(list(named(track(9, 4))));
    }
    [[nodiscard]] BYTES positional(u32 node = 0) const {
        BYTES out = BYTES().text(u"object").text(u"").text(u"\xD83D\xDE00").words({node});
        if (has(1.04F)) out.bytes(knows(1.04F) ? properties() : nothing(5));
        if (has(1.13F)) out.bytes(knows(1.13F) ? box_track() : nothing(1));
        return out;
    }
    /// The scale of old files, which is read and lost.
    [[nodiscard]] BYTES scale(f32 since) const { return has(since) && !has(1.13F) ? vector_3_track() : BYTES(); }

    [[nodiscard]] BYTES node(u32 parent) const {
        BYTES out = named(BYTES().words({parent})).bytes(track(3, 3, 0)).bytes(track(6, 4, 0));
        if (has(1.15F)) out.bytes(knows(1.15F) ? track(3, 3, 0) : nothing(1));
        if (!has(1.0500001F)) {
            for (int i = 0; i < 16; ++i) out.floats({static_cast<f32>(i)});
        }
        out.text(u"extra");
        if (has(1.04F)) out.bytes(knows(1.04F) ? properties() : nothing(5));
        return out;
    }

    [[nodiscard]] BYTES bitmap_map() const {
        BYTES out = named(BYTES().text(u"map")).bytes(float_track());
        out.words({7, 8}).bytes(vector_2_track()).bytes(vector_2_track()).words({1, 2}).bytes(vector_3_track());
        out.text(u"picture").words({3, 4}).words({1, 5}).bytes(track(7, 4));
        return out.floats({0.5F, 2}).words({6});
    }
    [[nodiscard]] BYTES normal_map() const {
        BYTES out = named(BYTES().text(u"map")).bytes(float_track());
        out.bytes(optional(0, bitmap_map())).words({0});
        return out.words({1, 0, 1, 9});
    }
    [[nodiscard]] BYTES optional(u32 kind, const BYTES& record) const {
        return full ? BYTES().words({1, kind}).bytes(record) : nothing(1);
    }
    [[nodiscard]] BYTES map() const { return optional(1, normal_map()); }

    [[nodiscard]] BYTES material_head() const {
        BYTES out = BYTES().text(u"material");
        if (has(1.08F)) out.text(knows(1.08F) ? u"second" : u"");
        if (has(1.15F)) out.bytes(knows(1.15F) ? properties() : nothing(5));
        return out;
    }
    [[nodiscard]] BYTES standard_material() const {
        BYTES out = material_head();
        for (int i = 0; i < 4; ++i) out.bytes(colour_track());
        for (int i = 0; i < 4; ++i) out.bytes(float_track());
        return out.words({1, 5}).bytes(list(map()));
    }
    [[nodiscard]] BYTES shader_material() const {
        BYTES out = material_head().text(u"shader").words({3});
        out.bytes(list(named(BYTES().text(u"value")))).bytes(list(named(BYTES().words({1, 2}))));
        out.bytes(list(named(float_track()))).bytes(list(named(int_track())));
        out.bytes(list(named(vector_3_track()))).bytes(list(named(track(9, 4))));
        if (has(1.14F)) out.words({knows(1.14F) ? 8U : 0U});
        return out;
    }

    [[nodiscard]] BYTES attenuation() const { return int_track().bytes(float_track()).bytes(float_track()); }
    [[nodiscard]] BYTES light(bool directed) const {
        BYTES out = positional();
        if (has(1.07F)) out.bytes(knows(1.07F) ? int_track() : nothing(1));
        out.bytes(colour_track()).bytes(colour_track()).bytes(colour_track());
        out.bytes(vector_3_track()).bytes(float_track()).bytes(map());
        if (has(1.05F)) out.bytes(knows(1.05F) ? attenuation().bytes(attenuation()) : nothing(6));
        if (has(1.07F) && !knows(1.07F)) out.bytes(nothing(14));
        if (has(1.07F) && knows(1.07F)) {
            out.bytes(int_track());
            out.bytes(colour_track()).bytes(float_track()).bytes(int_track()).bytes(map()).bytes(int_track());
            out.bytes(attenuation());
            out.bytes(float_track()).bytes(int_track()).bytes(float_track()).bytes(int_track()).bytes(int_track());
        }
        if (directed) out.bytes(float_track()).bytes(float_track()).words({0xFFFFFFFE});
        return out;
    }
    [[nodiscard]] BYTES camera() const {
        BYTES out = positional().words({4});
        out.bytes(float_track()).bytes(float_track()).bytes(range_track()).bytes(range_track());
        const BYTES i = int_track(), f = float_track();
        BYTES blur, depth;
        for (const BYTES* t : {&i, &f, &f, &i, &f, &i, &i, &i}) blur.bytes(*t);
        for (const BYTES* t : {&i, &f, &i, &i, &f, &f, &i, &f, &i, &i, &i}) depth.bytes(*t);
        return out.words({3}).bytes(optional(1, depth)).words({0}).bytes(optional(0, blur));
    }

    [[nodiscard]] BYTES pairs() const { return list(BYTES().floats({1, 0, 0, 0, 1, 0})); }
    [[nodiscard]] BYTES rigid_vertex() const {
        BYTES out = BYTES().floats({1, 2, 3, 0, 0, 1, 0.1F, 0.2F, 0.3F, 0.4F}).bytes(list(BYTES().floats({5, 6, 7})));
        if (has(1.03F)) out.bytes(knows(1.03F) ? pairs() : nothing(1));
        return out;
    }
    [[nodiscard]] BYTES weighted_vertex() const {
        return rigid_vertex().bytes(list(BYTES().words({1}).floats({0.5F}))).floats({1, 1, 1, 0, 1, 0});
    }
    [[nodiscard]] BYTES morph_vertex() const {
        return rigid_vertex().bytes(list(BYTES().floats({1, 0, 0}).words({0xFFFFFFFF}))).floats({0.5F, 0, 0});
    }
    [[nodiscard]] BYTES anim_vertex() const {
        BYTES out = vector_3_track().bytes(vector_3_track()).bytes(colour_track()).bytes(list(vector_3_track()));
        if (has(1.03F)) out.bytes(knows(1.03F) ? list(track(10, 6)) : nothing(1));
        return out;
    }
    [[nodiscard]] BYTES sub_objects() const {
        return list(list(BYTES().words({0, 1, 0xFFFFFFFF})).words({0xFFFFFFFF}));
    }
    [[nodiscard]] BYTES mesh(const BYTES& vertex) const {
        return positional(99).bytes(numbers()).bytes(numbers()).bytes(list(vertex)).bytes(sub_objects()).words({11});
    }
    [[nodiscard]] BYTES splines() const {
        const BYTES curves = list(BYTES().words({3}).floats({2.5F}));
        const BYTES fixed = list(BYTES().floats({1, 2, 3})).bytes(curves);
        return positional().bytes(list(fixed)).bytes(list(list(vector_3_track()).bytes(curves)));
    }
    [[nodiscard]] BYTES instance(u32 chunk_id) const {
        BYTES out = positional().bytes(scale(1.12F)).words({12});
        if (chunk_id > 14) out.bytes(numbers());
        if (chunk_id == 18) out.bytes(numbers());
        if (chunk_id == 19) out.bytes(sub_objects());
        return out;
    }
    [[nodiscard]] BYTES xref_object() const {
        return positional().bytes(numbers()).bytes(scale(1.12F)).text(u"x\u00e9").words({13}).text(u"");
    }
    [[nodiscard]] BYTES speedtree() const { return positional().bytes(scale(0)).bytes(numbers()).text(u"tree"); }

    [[nodiscard]] BYTES array_lengths() const {
        const u32 xrefs = references ? 1 : 0;
        BYTES out = BYTES().words({23, 3, 1, 1, 1, 1, 1, 1, 1, 2}).words({1, 1, 1, 1, 1, 1, 1, 1}).words({xrefs});
        if (has(1.10F)) out.words({xrefs, 1, 1});
        if (has(1.12F)) out.words({1, 1});
        return out;
    }
    [[nodiscard]] BYTES instances(std::initializer_list<u32> kinds) const {
        BYTES out;
        for (const u32 kind : kinds) {
            const u32 chunk_id = std::array{14U, 16U, 18U, 19U}[kind % 4];
            out.chunk(chunk_id, BYTES().words({kind}).bytes(instance(chunk_id)));
        }
        return out;
    }
    /// The whole file, in the order in which the library writes.
    [[nodiscard]] BYTES file() const {
        BYTES environment = BYTES().floats({-1, 9}).bytes(colour_track()).bytes(map());
        if (has(1.16F)) environment.f64s(knows(1.16F) ? 30 : 0);
        BYTES out = BYTES().words({MAGIC_WORD}).chunk(0, BYTES().floats({layout}).text(u"us").text(u"\u4e2d"));
        out.chunk(1, array_lengths()).chunk(2, environment);
        out.chunk(3, float_track().bytes(colour_track())).chunk(4, colour_track()).chunk(22, int_track());
        for (const u32 kind : {2U, 0U, 1U}) out.chunk(5, BYTES().words({kind}).bytes(light(kind != 1)));
        out.chunk(6, camera()).chunk(7, mesh(rigid_vertex())).chunk(8, mesh(anim_vertex()));
        out.chunk(9, mesh(morph_vertex()).bytes(list(named(float_track()))));
        out.chunk(10, mesh(weighted_vertex())).chunk(11, splines()).chunk(17, positional()).chunk(23, speedtree());
        out.chunk(12, BYTES().words({2}).bytes(node(0xFFFFFFFF)).bytes(node(0)));
        out.chunk(13, BYTES().words({1}).bytes(shader_material()));
        out.chunk(13, BYTES().words({0}).bytes(standard_material()));
        out.bytes(instances({3, 2, 5, 0, 4, 6, 1, 7}));
        if (references) out.chunk(15, BYTES().text(referenced)).chunk(20, BYTES().text(referenced));
        return out.chunk(21, xref_object()).bytes(instances({8, 9}));
    }
};

/// Every threshold of the format, and the last version below each.
inline std::vector<f32> telling_versions() {
    std::vector<f32> versions{0, 1.00F};
    for (const f32 threshold : {1.03F, 1.04F, 1.05F, 1.06F, 1.07F, 1.08F, 1.10F, 1.12F, 1.13F, 1.14F, 1.15F, 1.16F}) {
        versions.push_back(std::nextafter(threshold, 0.0F));
        versions.push_back(threshold);
    }
    return versions;
}

} // namespace VOR2_LOADER
