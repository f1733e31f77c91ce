#include "support/array/array.h"
#include "support/array/owned.h"
#include "support/array/shared_blocks.h"
#include "support/array/virtual_block.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace VOR2_LOADER {
namespace {

/// Tells when it goes.
struct TELLER {
    int number = 0;
    static inline std::vector<int> destroyed;
    ~TELLER() { destroyed.push_back(number); }
    TELLER() = default;
    explicit TELLER(int n) : number(n) {}
    TELLER(const TELLER&) = default;
    TELLER(TELLER&& source) noexcept : number(source.number) {}
    TELLER& operator=(const TELLER&) = default;
};

TEST(array, growth_shows_outside) {
    ARRAY<u32> array;
    array.reserve(0);
    array.grow_by(0);
    EXPECT_EQ(array.data(), nullptr);
    array.push_back(1);
    EXPECT_EQ(array.capacity(), 8U);
    for (u32 i = 1; i < 9; ++i) array.push_back(array[0]);
    EXPECT_EQ(array.capacity(), 16U);
    ARRAY<u32> exact;
    exact.reserve(5);
    EXPECT_EQ(exact.capacity(), 5U);
    exact.grow_by(3);
    exact.grow_by(4);
    EXPECT_EQ(exact.capacity(), 7U);
    for (int i = 0; i < 1; ++i) exact.push_back(0);
    EXPECT_EQ(exact.capacity(), 14U);
    const ARRAY<u32> copy(exact);
    EXPECT_EQ(copy.capacity(), 14U) << "a copy takes the capacity";
    ARRAY<u32> assigned;
    assigned = exact;
    EXPECT_EQ(assigned.capacity(), 8U) << "an assignment fits the size";
}

TEST(array, clear_destroys_from_the_end_and_keeps_the_block) {
    ARRAY<TELLER> array;
    array.reserve(3);
    for (int i = 0; i < 3; ++i) array.emplace_back(i);
    TELLER::destroyed.clear();
    const TELLER* block = array.data();
    array.clear();
    EXPECT_EQ(TELLER::destroyed, (std::vector<int>{2, 1, 0}));
    array.emplace_back(4);
    EXPECT_EQ(array.data(), block);
    EXPECT_EQ(array.capacity(), 3U);
}

TEST(array, an_element_of_its_own_can_be_appended_while_it_grows) {
    ARRAY<std::string> array;
    for (int i = 0; i < 100; ++i) array.push_back(i == 0 ? std::string(50, 'x') : array[0]);
    EXPECT_EQ(array[99], std::string(50, 'x'));
    array = array; // NOLINT(clang-diagnostic-self-assign-overloaded): that is the point
    EXPECT_EQ(array.size(), 100U);
}

/// For as long as it stands, all memory of arrays is counted.
class COUNTED_MEMORY {
public:
    COUNTED_MEMORY() {
        live_blocks = 0;
        allocate_hook = [](std::size_t size, std::size_t) {
            ++live_blocks;
            return std::malloc(size);
        };
        free_hook = [](void* block) {
            --live_blocks;
            std::free(block);
        };
    }
    ~COUNTED_MEMORY() {
        allocate_hook = nullptr;
        free_hook = nullptr;
    }
    COUNTED_MEMORY(const COUNTED_MEMORY&) = delete;
    COUNTED_MEMORY& operator=(const COUNTED_MEMORY&) = delete;

    inline static std::atomic<int> live_blocks;
};

TEST(array, memory_goes_through_the_hooks) {
    const COUNTED_MEMORY memory;
    {
        ARRAY<f32> array;
        for (int i = 0; i < 20; ++i) array.push_back(0);
        EXPECT_EQ(memory.live_blocks, 1);
    }
    EXPECT_EQ(memory.live_blocks, 0);
    allocate_hook = [](std::size_t, std::size_t) -> void* { return nullptr; };
    ARRAY<f32> array;
    EXPECT_THROW(array.reserve(1), std::bad_alloc);
    EXPECT_THROW(array.reserve(~u64{0}), std::bad_alloc);
    EXPECT_EQ(array.size(), 0U);
}

TEST(array, small_ones_share_blocks_that_live_as_long_as_the_last_of_them) {
    const COUNTED_MEMORY memory;
    std::vector<ARRAY<std::string>> lists(2000);
    {
        SHARED_BLOCKS outer;
        for (u64 i = 0; i < lists.size(); ++i) {
            lists[i].reserve(1 + i % 3);
            for (u64 k = 0; k <= i % 3; ++k) lists[i].emplace_back();
        }
        EXPECT_LT(memory.live_blocks, 8);
        {
            SHARED_BLOCKS inner;
            ARRAY<u8> odd;
            odd.grow_by(3);
            odd[2] = 7;
            ARRAY<f64> large;
            const int before = memory.live_blocks;
            large.reserve(SHARED_BLOCKS::MOST); // more bytes than are shared
            EXPECT_EQ(memory.live_blocks, before + 1);
        }
        EXPECT_EQ(SHARED_BLOCKS::current(), &outer);
    }
    EXPECT_EQ(SHARED_BLOCKS::current(), nullptr);
    // They stay what they are: they move, are copied, grow out of the block, and end in any order on any thread.
    ARRAY<std::string> moved(std::move(lists[5])), copy(moved);
    EXPECT_EQ(copy.capacity(), 3U);
    lists[4] = std::move(moved);
    lists[4].emplace_back("four");
    EXPECT_EQ(lists[4].capacity(), 6U);
    EXPECT_EQ(lists[4].back(), "four");
    std::thread([&] { lists.erase(lists.begin() + 6, lists.end()); }).join();
    lists.clear();
    copy = {};
    EXPECT_EQ(memory.live_blocks, 0);
}

struct SHAPE {
    virtual ~SHAPE() = default;
    [[nodiscard]] virtual OWNED<SHAPE> clone() const = 0;
    int id = 0;
};
struct ROUND : SHAPE {
    [[nodiscard]] OWNED<SHAPE> clone() const override {
        OWNED<SHAPE> copy(new ROUND(*this));
        copy->id += 1;
        return copy;
    }
};

TEST(owned, copies_by_clone) {
    OWNED<SHAPE> shape = make_owned<ROUND>();
    OWNED_ARRAY<SHAPE> list;
    list.push_back(shape);
    list.push_back(nullptr);
    const OWNED_ARRAY<SHAPE> copy(list);
    EXPECT_EQ(copy[0]->id, 2);
    EXPECT_EQ(copy[1], nullptr);
    EXPECT_NE(copy[0].get(), list[0].get());
}

TEST(virtual_block, comes_zeroed_in_whole_granules) {
    EXPECT_EQ(VIRTUAL_BLOCK::rounded(1), 65536U);
    EXPECT_EQ(VIRTUAL_BLOCK::rounded(65536), 65536U);
    EXPECT_EQ(VIRTUAL_BLOCK::rounded(65537), 131072U);
    VIRTUAL_BLOCK block;
    block.allocate(1);
    ASSERT_NE(block.address(), nullptr);
    for (u32 i = 0; i < 65536; ++i) ASSERT_EQ(block.address()[i], 0);
    block.allocate(0);
    EXPECT_EQ(block.address(), nullptr);
}

} // namespace
} // namespace VOR2_LOADER
