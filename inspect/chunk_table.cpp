#include "inspect/chunk_table.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>

namespace vor2::inspect {

using namespace VOR2_LOADER;

namespace {

constexpr u32 header_size = 8;

constexpr std::array<std::string_view, 24> chunk_names{"scene information",
                                                       "array lengths",
                                                       "environment",
                                                       "global light tint",
                                                       "ambient light",
                                                       "light",
                                                       "camera",
                                                       "rigid mesh",
                                                       "animated mesh",
                                                       "morph mesh",
                                                       "weighted mesh",
                                                       "spline",
                                                       "matrix hierarchy",
                                                       "material",
                                                       "instance",
                                                       "reference (15)",
                                                       "geometry instance",
                                                       "helper",
                                                       "instance with materials",
                                                       "instance with sub-objects",
                                                       "reference (20)",
                                                       "referenced object",
                                                       "camera man",
                                                       "referenced SpeedTree"};

} // namespace

ChunkTable measure_chunks(std::span<const u8> file) {
    ChunkTable table;
    std::map<i32, ChunkSize> by_id;
    std::size_t place = std::min<std::size_t>(sizeof(u32), file.size());
    while (file.size() - place >= header_size) {
        u32 length = 0;
        i32 id = 0;
        std::memcpy(&length, file.data() + place, sizeof length);
        std::memcpy(&id, file.data() + place + sizeof length, sizeof id);
        if (length < header_size || length > file.size() - place) break;
        // All ids that the format doesn't have share one row, however many a file makes up.
        const bool known = id >= 0 && static_cast<std::size_t>(id) < chunk_names.size();
        const i32 row = known ? id : -1;
        std::string_view name = "unknown";
        if (known) name = chunk_names[static_cast<std::size_t>(id)];
        const auto kind = by_id.try_emplace(row, ChunkSize{row, name, 0, 0}).first;
        ++kind->second.count;
        kind->second.bytes += length;
        place += length;
    }
    table.bytes_in_none = file.size();
    for (const auto& [id, kind] : by_id) {
        table.kinds.push_back(kind);
        table.bytes_in_none -= kind.bytes;
    }
    std::stable_sort(table.kinds.begin(), table.kinds.end(),
                     [](const ChunkSize& a, const ChunkSize& b) { return a.bytes > b.bytes; });
    return table;
}

} // namespace vor2::inspect
