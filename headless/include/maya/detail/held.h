#pragma once

namespace headless {

/// A value of a kind that the public headers only name, as theirs do: copied with its holder. It is made when it is
/// first changed; until then it reads as a new one. What it does stands in `headless/api/held.h`.
template<typename T>
class Held {
public:
    Held() = default;
    Held(const Held& other);
    Held& operator=(const Held& other);
    ~Held();

    const T& operator*() const;
    T& operator*();
    const T* operator->() const { return &**this; }
    T* operator->() { return &**this; }
    bool is_made() const { return value_ != nullptr; }
    void forget();

private:
    T* value_ = nullptr;
};

} // namespace headless
