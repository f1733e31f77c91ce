#include "format/scene/root.h"

#include "format/scene/detail/root_chunks.h"

namespace VOR2_LOADER {
namespace {

constexpr std::size_t ROW_COUNT = std::tuple_size_v<decltype(ROOT_CHUNKS)>;

/// The rows' places in the table, sorted by the turn each has when the clock moves.
constexpr std::array<std::size_t, ROW_COUNT> rows_by_move_place() {
    std::array<u32, ROW_COUNT> places{};
    std::array<std::size_t, ROW_COUNT> order{};
    std::size_t row_index = 0;
    each_chunk_row([&](const auto& row) { places[row_index++] = row.move_place; });
    for (std::size_t i = 0; i < ROW_COUNT; ++i) order[i] = i;
    std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return places[a] < places[b]; });
    return order;
}

void skin_all(VOR2& root) {
    if (root.weighted_meshes.empty()) return;
    const BONE_PALETTE palette(root.matrix_hierarchy);
    for (OWNED<VOR2_WEIGHTED_MESH>& mesh : root.weighted_meshes) {
        if (mesh) mesh->skin(palette);
    }
}

/// Moves what stands in one row of the table, and skins before the first row behind the skinning's place.
template<std::size_t ROW, class STEP>
void move_row(VOR2& root, const STEP& step, bool& skinned) {
    static constexpr auto& TABLE_ROW = std::get<ROW>(ROOT_CHUNKS);
    if (TABLE_ROW.move_place > SKINNING_PLACE && !std::exchange(skinned, true)) skin_all(root);
    if constexpr (TABLE_ROW.move_place != NOT_MOVED) TABLE_ROW.move(root, step);
}

template<class STEP, std::size_t... PLACES>
void move_rows(VOR2& root, const STEP& step, std::index_sequence<PLACES...> /*all*/) {
    static constexpr auto ORDER = rows_by_move_place();
    bool skinned = false;
    (move_row<ORDER[PLACES]>(root, step, skinned), ...);
}

} // namespace

VOR2::VOR2() = default;
VOR2::VOR2(const VOR2& source) = default;
VOR2& VOR2::operator=(const VOR2& source) = default;
VOR2::VOR2(VOR2&&) noexcept = default;
VOR2& VOR2::operator=(VOR2&&) noexcept = default;
VOR2::~VOR2() = default;

void VOR2::clear() {
    each_chunk_row([this](const auto& row) { row.clear(*this); });
}

void VOR2::advance(f32 delta) {
    move_rows(*this, ADVANCE{delta}, std::make_index_sequence<ROW_COUNT>());
}

void VOR2::set_time(f32 time) {
    move_rows(*this, SET_TIME{time}, std::make_index_sequence<ROW_COUNT>());
}

void VOR2::describe(RECORD_VISITOR& visitor) const {
    each_chunk_row([&](const auto& row) { row.describe(*this, visitor); });
}

} // namespace VOR2_LOADER
