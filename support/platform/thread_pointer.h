#pragma once

#include <cstdint>

namespace VOR2_LOADER::platform {

/// A pointer of each thread's own, null at first, whose object is destroyed with its thread. In place of
/// `thread_local`, of which some compilers for Windows free the memory before the destructor runs. Meant to live as
/// long as the code that uses it: where it goes earlier than its threads, POSIX leaves the objects of other threads.
class THREAD_POINTER {
public:
    using DESTROY = void (*)(void* object);

    /// `destroy` gets every pointer that isn't null. When the system has no place left, `set` keeps nothing.
    explicit THREAD_POINTER(DESTROY destroy) noexcept;
    ~THREAD_POINTER();
    THREAD_POINTER(const THREAD_POINTER&) = delete;
    THREAD_POINTER& operator=(const THREAD_POINTER&) = delete;

    [[nodiscard]] void* get() const noexcept;
    /// Whether it was kept.
    [[nodiscard]] bool set(void* object) noexcept;

private:
    std::uint32_t my_key = 0;
    DESTROY my_destroy;
    bool my_key_is_made = false;
};

} // namespace VOR2_LOADER::platform
