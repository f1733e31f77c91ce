#pragma once

/// Takes numbers off the front of a fuzzer's bytes; zeros once they are used up.

#include "support/types.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>

namespace fuzz {

using namespace VOR2_LOADER;

class Input {
public:
    Input(const u8* data, std::size_t size) : rest_(data, size) {}

    template<class T>
    T take() {
        T value{};
        const std::size_t size = std::min(sizeof value, rest_.size());
        if (size > 0) std::memcpy(&value, rest_.data(), size);
        rest_ = rest_.subspan(size);
        return value;
    }
    /// From 0 up to but without `end`.
    u32 below(u32 end) { return take<u32>() % end; }
    std::string text(std::size_t most) {
        const std::size_t size = std::min<std::size_t>(take<u8>() % (most + 1), rest_.size());
        std::string out(reinterpret_cast<const char*>(rest_.data()), size);
        rest_ = rest_.subspan(size);
        return out;
    }
    std::span<const u8> rest() const { return rest_; }
    bool empty() const { return rest_.empty(); }

private:
    std::span<const u8> rest_;
};

/// Ends the run, with a reason, so that the fuzzer keeps the input.
[[noreturn]] inline void wrong(const char* why) {
    std::fprintf(stderr, "wrong: %s\n", why);
    std::abort();
}

} // namespace fuzz
