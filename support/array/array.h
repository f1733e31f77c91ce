#pragma once

/// `ARRAY`, the one growable array of the library.
///
/// Growth shows outside, and readers rely on it: `push_back` doubles the capacity from 8, while
/// `reserve` and `grow_by` fit exactly. Nothing ever shrinks an array. Elements move when the array
/// grows, so a pointer or reference to an element does not outlive a growth.

#include "support/array/memory.h"
#include "support/array/shared_blocks.h"
#include "support/types.h"

#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

namespace VOR2_LOADER {

/// Plain values are moved in blocks; `grow_by` leaves new ones uninitialised.
template<class T>
concept PLAIN_ELEMENT = std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>;

template<class T>
class ARRAY {
public:
    using value_type = T;

    ARRAY() noexcept = default;
    /// Takes the source's capacity, then copies its elements in order.
    ARRAY(const ARRAY& source) {
        if (source.capacity() == 0) return;
        my_data = allocate(source.capacity());
        my_capacity = source.capacity();
        try {
            append_copies(source.my_data, source.my_size);
        } catch (...) {
            release();
            throw;
        }
    }
    ARRAY(ARRAY&& source)
    noexcept
        : my_data(std::exchange(source.my_data, nullptr)), my_size(std::exchange(source.my_size, 0)),
          my_capacity(std::exchange(source.my_capacity, 0)) {}
    ~ARRAY() { release(); }

    ARRAY& operator=(const ARRAY& source) {
        if (this == &source) return *this;
        clear();
        reserve(source.my_size);
        append_copies(source.my_data, source.my_size);
        return *this;
    }
    ARRAY& operator=(ARRAY&& source) noexcept {
        if (this == &source) return *this;
        release();
        my_data = std::exchange(source.my_data, nullptr);
        my_size = std::exchange(source.my_size, 0);
        my_capacity = std::exchange(source.my_capacity, 0);
        return *this;
    }

    /// Appends, doubling the capacity (from 8) when it is full. An element of this very array is
    /// a valid argument.
    T& push_back(const T& element) { return emplace_back(element); }
    T& push_back(T&& element) { return emplace_back(std::move(element)); }

    template<class... ARGUMENTS>
    T& emplace_back(ARGUMENTS&&... arguments) {
        if (my_size < capacity()) [[likely]] {
            T* slot = ::new (static_cast<void*>(my_data + my_size)) T(std::forward<ARGUMENTS>(arguments)...);
            ++my_size;
            return *slot;
        }
        // The new element is made before the old block goes, since an argument may lie in it.
        const u64 more = capacity() == 0 ? 8 : capacity() * 2;
        T* block = allocate(more);
        T* slot = nullptr;
        try {
            slot = ::new (static_cast<void*>(block + my_size)) T(std::forward<ARGUMENTS>(arguments)...);
        } catch (...) {
            free_memory(block);
            throw;
        }
        move_elements_to(block, more);
        ++my_size;
        return *slot;
    }

    /// Makes room for `count` elements in all, exactly; does nothing when there is room already.
    void reserve(u64 count) {
        if (count <= capacity()) return;
        if constexpr (alignof(T) <= 8) {
            SHARED_BLOCKS* shared = my_capacity == 0 ? SHARED_BLOCKS::current() : nullptr;
            if (shared != nullptr && count <= SHARED_BLOCKS::MOST / sizeof(T)) {
                my_data = static_cast<T*>(shared->take(static_cast<std::size_t>(count) * sizeof(T)));
                my_capacity = count | IS_SHARED;
                return;
            }
        }
        move_elements_to(allocate(count), count);
    }

    /// Adds `count` elements: plain ones uninitialised, those of a class default-constructed in order.
    void grow_by(u64 count) {
        if (count > std::numeric_limits<u64>::max() - my_size) throw std::bad_alloc();
        reserve(my_size + count);
        if constexpr (PLAIN_ELEMENT<T>) {
            my_size += count;
        } else {
            for (u64 i = 0; i < count; ++i, ++my_size) ::new (static_cast<void*>(my_data + my_size)) T();
        }
    }

    /// Destroys the elements from the last to the first and keeps the block for reuse.
    void clear() noexcept {
        if constexpr (std::is_trivially_destructible_v<T>) {
            my_size = 0;
        } else {
            while (my_size > 0) destroy(my_data[--my_size]);
        }
    }

    /// Takes the last element away. The array must not be empty.
    void pop_back() noexcept { destroy(my_data[--my_size]); }

    [[nodiscard]] u64 size() const noexcept { return my_size; }
    [[nodiscard]] u64 capacity() const noexcept { return my_capacity & ~IS_SHARED; }
    [[nodiscard]] bool empty() const noexcept { return my_size == 0; }
    [[nodiscard]] T* data() noexcept { return my_data; }
    [[nodiscard]] const T* data() const noexcept { return my_data; }
    /// No bounds check.
    [[nodiscard]] T& operator[](u64 index) noexcept { return my_data[index]; }
    [[nodiscard]] const T& operator[](u64 index) const noexcept { return my_data[index]; }
    [[nodiscard]] T& back() noexcept { return my_data[my_size - 1]; }
    [[nodiscard]] const T& back() const noexcept { return my_data[my_size - 1]; }

    [[nodiscard]] T* begin() noexcept { return my_data; }
    [[nodiscard]] T* end() noexcept { return my_data + my_size; }
    [[nodiscard]] const T* begin() const noexcept { return my_data; }
    [[nodiscard]] const T* end() const noexcept { return my_data + my_size; }
    [[nodiscard]] std::span<const T> view() const noexcept { return {my_data, static_cast<std::size_t>(my_size)}; }

protected:
    /// For texts, whose NUL element moves as characters come: sets the count of a plain array
    /// within its capacity.
    void set_size(u64 size) noexcept requires PLAIN_ELEMENT<T> { my_size = size; }

private:
    /// An element is of just this class, so that no virtual call has to find its destructor.
    static void destroy(T& element) noexcept {
#ifdef __cppcheck__ // which can't read the other spelling
        element.~T();
#else
        if constexpr (std::is_class_v<T>) {
            element.T::~T();
        } else {
            element.~T();
        }
#endif
    }

    [[nodiscard]] static T* allocate(u64 count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(T)) throw std::bad_alloc();
        return static_cast<T*>(allocate_memory(static_cast<std::size_t>(count) * sizeof(T), alignof(T)));
    }

    void append_copies(const T* from, u64 count) {
        if constexpr (PLAIN_ELEMENT<T>) {
            if (count > 0) std::memcpy(static_cast<void*>(my_data + my_size), from, count * sizeof(T));
            my_size += count;
        } else {
            for (u64 i = 0; i < count; ++i, ++my_size) ::new (static_cast<void*>(my_data + my_size)) T(from[i]);
        }
    }

    void move_elements_to(T* block, u64 capacity) {
        if constexpr (PLAIN_ELEMENT<T>) {
            if (my_size > 0) std::memcpy(static_cast<void*>(block), my_data, my_size * sizeof(T));
        } else {
            static_assert(std::is_nothrow_move_constructible_v<T>, "a growing array can't undo half a move");
            for (u64 i = 0; i < my_size; ++i) {
                ::new (static_cast<void*>(block + i)) T(std::move(my_data[i]));
                destroy(my_data[i]);
            }
        }
        free_block();
        my_data = block;
        my_capacity = capacity;
    }

    void release() noexcept {
        clear();
        free_block();
        my_data = nullptr;
    }

    void free_block() noexcept {
        if ((my_capacity & IS_SHARED) == 0) [[likely]] {
            free_memory(my_data);
        } else {
            SHARED_BLOCKS::give_back(my_data, static_cast<std::size_t>(capacity()) * sizeof(T));
        }
    }

    /// In the capacity: the memory is part of a shared block.
    static constexpr u64 IS_SHARED = u64{1} << 63U;

    T* my_data = nullptr;
    u64 my_size = 0;
    u64 my_capacity = 0;
};

} // namespace VOR2_LOADER
