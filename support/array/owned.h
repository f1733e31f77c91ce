#pragma once

/// `OWNED`, the owning pointer whose copy is a `clone`, so that classes built of it need no copy
/// constructor, assignment or destructor of their own.

#include "support/array/array.h"

#include <memory>
#include <utility>

namespace VOR2_LOADER {

/// Points to one `T` on the heap, or to nothing. Destroys it with itself. A copy points to
/// `clone()` of the object where `T` has one (it gives an `OWNED`), otherwise to a copy of it.
template<class T>
class OWNED {
public:
    using element_type = T;

    OWNED() noexcept = default;
    OWNED(std::nullptr_t) noexcept {}
    explicit OWNED(T* object) noexcept : my_object(object) {}
    template<class OTHER>
    requires std::is_convertible_v<OTHER*, T*> OWNED(std::unique_ptr<OTHER> object)
    noexcept : my_object(std::move(object)) {}
    OWNED(const OWNED& source) : my_object(copy_of(source.my_object.get())) {}
    OWNED(OWNED&&) noexcept = default;
    /// Takes over an object of a derived class.
    template<class OTHER>
    requires std::is_convertible_v<OTHER*, T*> OWNED(OWNED<OTHER>&& source)
    noexcept : my_object(source.release()) {}
    ~OWNED() = default;
    OWNED& operator=(const OWNED& source) {
        if (this != &source) my_object.reset(copy_of(source.my_object.get()));
        return *this;
    }
    OWNED& operator=(OWNED&&) noexcept = default;

    [[nodiscard]] T* get() const noexcept { return my_object.get(); }
    T* operator->() const noexcept { return my_object.get(); }
    T& operator*() const noexcept { return *my_object; }
    explicit operator bool() const noexcept { return my_object != nullptr; }
    friend bool operator==(const OWNED& pointer, std::nullptr_t) noexcept { return !pointer.my_object; }
    /// Destroys what is held and takes over `object`.
    void reset(T* object = nullptr) noexcept { my_object.reset(object); }
    /// Hands the object over to the caller.
    [[nodiscard]] T* release() noexcept { return my_object.release(); }

private:
    [[nodiscard]] static T* copy_of(const T* object) {
        if (object == nullptr) return nullptr;
        if constexpr (requires { object->clone(); }) {
            return object->clone().release();
        } else {
            return new T(*object);
        }
    }

    std::unique_ptr<T> my_object;
};

template<class T, class... ARGUMENTS>
[[nodiscard]] OWNED<T> make_owned(ARGUMENTS&&... arguments) {
    return OWNED<T>(new T(std::forward<ARGUMENTS>(arguments)...));
}

/// A list of owned objects, any of which may be absent.
template<class T>
using OWNED_ARRAY = ARRAY<OWNED<T>>;

} // namespace VOR2_LOADER
