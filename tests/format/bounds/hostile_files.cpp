#include "tests/format/bounds/hostile_files.h"

#include <cmath>

namespace VOR2_LOADER {
namespace {

BYTES zeros(u32 size) {
    BYTES out;
    out.data.resize(size);
    return out;
}

/// The same piece over and over behind the start of a file.
BYTES filled(u32 size, f32 version, const BYTES& piece) {
    BYTES out = file_of_version(version);
    while (out.size() < size) out.bytes(piece);
    return out;
}

/// Nodes without names, tracks or properties.
BYTES nodes(u32 size, const std::function<u32(u32)>& parent_of) {
    constexpr u32 NODE_SIZE = 40;
    const u32 count = size / NODE_SIZE;
    BYTES body = BYTES().words({count});
    for (u32 i = 0; i < count; ++i) body.text(u"").words({parent_of(i), 0, 0, 0}).text(u"").words({0, 0, 0, 0, 0});
    return file_of_version(CURRENT_VERSION).chunk(12, body);
}

/// A background colour with keys at those times, in a scene that starts at none.
BYTES keyed(u32 size, const std::function<f32(u32)>& time_of) {
    const u32 count = size / 20;
    BYTES body = BYTES().floats({std::nanf(""), 9}).words({1, 2, 7}).floats({0.5F}).words({count});
    for (u32 i = 0; i < count; ++i) body.floats({time_of(i)});
    return file_of_version(CURRENT_VERSION).chunk(2, body.words({count}).bytes(zeros(16 * count)).words({0}).f64s(30));
}

/// Maps within maps, each the first of the one around it.
BYTES nested_maps(u32 size) {
    const u32 depth = size / 32;
    BYTES body = BYTES().floats({0, 1}).words({0, 1, VOR2_NORMAL_MATERIAL_MAP::KIND});
    for (u32 i = 0; i + 1 < depth; ++i) body.text(u"").text(u"").words({0, 1, VOR2_NORMAL_MATERIAL_MAP::KIND});
    body.text(u"").text(u"").words({0, 0, 0, 0, 0, 0, 0});
    for (u32 i = 0; i + 1 < depth; ++i) body.words({0, 0, 0, 1, i});
    return file_of_version(CURRENT_VERSION).chunk(2, body.f64s(30));
}

/// A helper with a property whose value is a list of empty texts, each of two bytes.
BYTES empty_texts(u32 size) {
    const u32 count = size / 2;
    BYTES body = BYTES().text(u"").text(u"").text(u"").words({0, 1}).text(u"").words({count}).bytes(zeros(2 * count));
    return file_of_version(CURRENT_VERSION).chunk(17, body.words({0, 0, 0, 0, 0}));
}

} // namespace

void each_hostile_scene(u32 size, const VISIT_FILE& visit) {
    constexpr u32 NO_NODE = 0xFFFFFFF0;
    visit("chunks of one byte", filled(size, CURRENT_VERSION, BYTES().words({9, 99}).raw("x", 1)));
    visit("maps within maps", nested_maps(size));
    visit("reversed times", keyed(size, [](u32 i) { return -static_cast<f32>(i); }));
    visit("times that are none", keyed(size, [](u32) { return std::nanf(""); }));
    visit("times all over", keyed(size, [](u32 i) { return static_cast<f32>(i * 2654435761U); }));
    visit("nodes that are their own parents", nodes(size, [](u32 i) { return i; }));
    visit("nodes in circles", nodes(size, [](u32 i) { return i ^ 1U; }));
    visit("nodes under nothing", nodes(size, [](u32) { return NO_NODE; }));
    visit("empty texts", empty_texts(size));
    BYTES lengths;
    for (u32 i = 0; i < 24; ++i) lengths.words({0xFFFFFFFF});
    visit("array lengths of 4 billion", filled(size, CURRENT_VERSION, BYTES().chunk(1, lengths)));
    // The smallest records of their kinds, in the version that has the fewest fields.
    for (const auto& [id, body_size] : {std::pair{17U, 10U}, {7U, 30U}, {9U, 34U}, {10U, 30U}, {11U, 18U}, {21U, 22U}})
        visit("small chunks of id " + std::to_string(id), filled(size, 0, BYTES().chunk(id, zeros(body_size))));
    visit("small instances", filled(size, 0, BYTES().chunk(14, zeros(18))));
}

void each_hostile_count(const VISIT_FILE& visit) {
    constexpr u32 BEHIND = 4000;
    for (const f32 version : {0.0F, CURRENT_VERSION}) {
        const BYTES records = EVERY_RECORD{version, version, false, 0}.file();
        u32 length = 0;
        for (std::size_t at = 4; at < records.size(); at += length) {
            u32 id = 0;
            std::memcpy(&length, &records.data[at], sizeof length);
            std::memcpy(&id, &records.data[at + 4], sizeof id);
            for (u32 place = 8; id != 0 && place <= length; place += 2) {
                for (const u32 least : {2U, 6U, 20U}) {
                    BYTES body;
                    body.raw(&records.data[at + 8], place - 8).words({BEHIND / least}).bytes(zeros(BEHIND));
                    visit("a count at " + std::to_string(place) + " of chunk " + std::to_string(id),
                          file_of_version(version).chunk(id, body));
                }
            }
        }
    }
}

} // namespace VOR2_LOADER
