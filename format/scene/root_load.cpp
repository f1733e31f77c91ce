#include "format/scene/detail/root_chunks.h"

namespace VOR2_LOADER {
namespace {

constexpr u32 CHUNK_ID_COUNT = 24;
constexpr u32 HEADER_SIZE = 8;
/// No element's chunk is shorter: the header and one word.
constexpr u32 LEAST_ELEMENT_CHUNK = 12;

using LOAD_CHUNK = bool (*)(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version);

template<std::size_t ROW>
bool load_row(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version) {
    return std::get<ROW>(ROOT_CHUNKS).load(root, buffer, version);
}

bool load_array_lengths(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version) {
    VOR2_ARRAY_LENGTH_HELPER lengths;
    if (!lengths.load(buffer, version)) return false;
    lengths.apply_to(root, buffer.remaining() / LEAST_ELEMENT_CHUNK);
    return true;
}

/// An instance's class follows from its chunk, its array from the kind before its record.
template<u32 CHUNK_ID>
bool load_instance(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32 version) {
    u32 kind = 0;
    if (!buffer.read_value(kind)) return false;
    OWNED_ARRAY<VOR2_INSTANCE>* instances = nullptr;
    each_chunk_row([&](const auto& row) {
        if constexpr (std::remove_cvref_t<decltype(row)>::IS_INSTANCES) {
            if (row.instance_kind == kind) instances = &(root.*row.member);
        }
    });
    if (instances == nullptr) return buffer.fail("no array holds instances of the kind " + std::to_string(kind));
    OWNED<VOR2_INSTANCE>& instance = instances->emplace_back();
    instance = VOR2_INSTANCE::make_of_chunk(CHUNK_ID);
    return instance->load(buffer, version);
}

template<u32... CHUNK_IDS>
constexpr void add_instance_loaders(auto& loaders) {
    ((loaders[CHUNK_IDS] = load_instance<CHUNK_IDS>), ...);
}

template<std::size_t ROW>
constexpr void add_row_loader(auto& loaders) {
    constexpr auto& TABLE_ROW = std::get<ROW>(ROOT_CHUNKS);
    if constexpr (TABLE_ROW.chunk_id != CHUNK_OF_THE_CLASS) loaders[TABLE_ROW.chunk_id] = load_row<ROW>;
}

constexpr std::array<LOAD_CHUNK, CHUNK_ID_COUNT> chunk_loaders() {
    std::array<LOAD_CHUNK, CHUNK_ID_COUNT> loaders{};
    loaders[VOR2_ARRAY_LENGTH_HELPER::CHUNK_ID] = load_array_lengths;
    add_instance_loaders<VOR2_INSTANCE::CHUNK_ID, VOR2_GEOM_INSTANCE::CHUNK_ID,
                         VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS::CHUNK_ID,
                         VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS::CHUNK_ID>(loaders);
    [&]<std::size_t... I>(std::index_sequence<I...>) {
        (add_row_loader<I>(loaders), ...);
    }
    (std::make_index_sequence<std::tuple_size_v<decltype(ROOT_CHUNKS)>>());
    return loaders;
}

/// Reads one chunk; `version` is what the records are read as, and chunk 0 sets it.
bool load_next_chunk(VOR2& root, VOR2_INPUT_BUFFER& buffer, f32& version) {
    static constexpr auto LOADERS = chunk_loaders();
    const u64 chunk_offset = buffer.offset();
    u32 length = 0;
    i32 chunk_id = 0;
    if (!buffer.read_value(length) || !buffer.read_value(chunk_id)) return false;
    const u32 body = length - HEADER_SIZE;
    if (body > buffer.remaining()) {
        return buffer.fail("a chunk of " + std::to_string(length) + " bytes at offset " + std::to_string(chunk_offset) +
                           " doesn't fit the file");
    }
    const bool known = chunk_id >= 0 && chunk_id < static_cast<i32>(CHUNK_ID_COUNT);
    if (!known || LOADERS[static_cast<u32>(chunk_id)] == nullptr) {
        buffer.cursor += body;
        return true;
    }
    const bool loaded = LOADERS[static_cast<u32>(chunk_id)](root, buffer, version);
    if (chunk_id == static_cast<i32>(VOR2_INF::CHUNK_ID)) version = root.inf.version;
    if (loaded && !buffer.failed()) return true;
    buffer.fail("a record is refused");
    return buffer.fail_within("chunk " + std::to_string(chunk_id) + " at offset " + std::to_string(chunk_offset));
}

} // namespace

bool VOR2::load(VOR2_INPUT_BUFFER& buffer, bool set_to_start) {
    clear();
    environment.sample_rate = 0;
    f32 version = 0;
    u32 magic = 0;
    if (buffer.cursor == buffer.end) return buffer.fail("the file is empty");
    if (!buffer.read_value(magic) || magic != MAGIC_WORD) {
        return buffer.fail(magic == 0 ? "no scene file, or one whose save didn't finish" : "no scene file");
    }
    while (buffer.cursor < buffer.end) {
        if (!load_next_chunk(*this, buffer, version)) return false;
    }
    prepare_weighted_meshes();
    if (set_to_start) set_time(environment.time_range.start);
    return true;
}

bool VOR2::load(const TEXT& file_name, bool set_to_start) {
    VOR2_INPUT_BUFFER buffer(file_name);
    return load(buffer, set_to_start);
}

} // namespace VOR2_LOADER
