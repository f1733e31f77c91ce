#pragma once

/// `NESTED_RECORD`, for a class that holds further objects of its own family, as deep as a file says. All
/// that is done to such a tree runs on a stack of its own on the heap, so that a file can't exhaust the
/// program's. The class tells its record as every other does, its children as `nested` fields:
///
///     class VOR2_EXAMPLE final : public NESTED_RECORD<VOR2_EXAMPLE, VOR2_FAMILY, 1> {
///         OWNED<VOR2_FAMILY> child;
///         static constexpr auto record() {
///             return RECORD("VOR2_EXAMPLE", base<VOR2_FAMILY>(), nested("child", &VOR2_EXAMPLE::child));
///         }
///     };
///
/// Its copy constructor calls `copy_nested` and its destructor `release_nested`.

#include "format/core/record.h"

namespace VOR2_LOADER {

/// A child: in the file an optional object. The tree's operations read and write it, and no others can.
struct NESTED_KIND {
    template<class>
    static constexpr u32 fixed_size() {
        return 0;
    }
    template<class>
    static constexpr u32 least_size() {
        return sizeof(u32);
    }
};

template<class OWNER, class FAMILY>
constexpr auto nested(std::string_view name, OWNED<FAMILY> OWNER::*member) {
    return FIELD<NESTED_KIND, OWNER, OWNED<FAMILY>>(name, member);
}

} // namespace VOR2_LOADER

#include "format/core/detail/nested_operations.h"

namespace VOR2_LOADER {

template<class SELF, class FAMILY, u32 NUMBER>
class NESTED_RECORD : public FAMILY {
public:
    static constexpr u32 KIND = NUMBER;
    [[nodiscard]] u32 kind() const final { return NUMBER; }
    [[nodiscard]] std::string_view class_name() const final { return SELF::record().class_name; }
    [[nodiscard]] OWNED<FAMILY> clone() const final { return OWNED<FAMILY>(new SELF(self())); }
    [[nodiscard]] bool equals(const FAMILY& other) const final {
        return other.kind() == NUMBER && self() == static_cast<const SELF&>(other);
    }
    friend bool operator==(const SELF& a, const SELF& b) {
        detail::NESTED_EQUAL<SELF> equal;
        detail::run_nested<SELF>(detail::NODE_PAIR<const SELF>{&a, &b}, equal);
        return equal.result;
    }
    bool load(VOR2_INPUT_BUFFER& buffer, f32 version) final {
        detail::NESTED_LOAD<SELF> load{buffer, version};
        detail::run_nested<SELF>(&self(), load);
        return load.result;
    }
    bool save(VOR2_WRITE_STREAM& stream) const final {
        detail::NESTED_SAVE<SELF> save{stream};
        detail::run_nested<SELF>(&self(), save);
        return save.result;
    }
    void describe(RECORD_VISITOR& visitor) const final {
        detail::NESTED_DESCRIPTION<SELF> description{visitor};
        detail::run_nested<SELF>(&self(), description);
    }
    void advance(f32 delta) final { move(ADVANCE{delta}); }
    void set_time(f32 time) final { move(SET_TIME{time}); }

protected:
    void copy_nested(const SELF& source) {
        detail::NESTED_COPY<SELF> copy;
        detail::run_nested<SELF>(detail::COPY_PAIR<SELF>{&self(), &source}, copy);
    }
    /// Destroys all that lies below, one object at a time.
    void release_nested() noexcept {
        ARRAY<OWNED<FAMILY>> waiting;
        detail::take_children(self(), waiting);
        while (!waiting.empty()) {
            const OWNED<FAMILY> object = std::move(waiting.back());
            waiting.pop_back();
            if (SELF* node = detail::as_node<SELF>(object.get())) detail::take_children(*node, waiting);
        }
    }

private:
    SELF& self() { return static_cast<SELF&>(*this); }
    const SELF& self() const { return static_cast<const SELF&>(*this); }
    template<class STEP>
    void move(const STEP& step) {
        detail::NESTED_WALK<SELF, STEP> walk{step};
        detail::run_nested<SELF>(&self(), walk);
    }
};

} // namespace VOR2_LOADER
