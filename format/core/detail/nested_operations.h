#pragma once

// The operations of format/core/nested_record.h, which includes this file. Each is told field by field
// and names the child to go into, if any; `run_nested` keeps the stack.

namespace VOR2_LOADER::detail {

template<class FIELD_TYPE>
inline constexpr bool IS_NESTED = false;
template<class OWNER, class MEMBER>
inline constexpr bool IS_NESTED<FIELD<NESTED_KIND, OWNER, MEMBER>> = true;

/// The object as a node of the tree; null for an absent one and for a leaf, which is of another class.
template<class NODE, class FAMILY>
[[nodiscard]] auto as_node(FAMILY* object) {
    using RESULT = std::conditional_t<std::is_const_v<FAMILY>, const NODE, NODE>*;
    return object != nullptr && object->kind() == NODE::KIND ? static_cast<RESULT>(object) : nullptr;
}

template<class NODE>
struct NODE_PAIR {
    NODE* a;
    NODE* b;
    explicit operator bool() const { return a != nullptr && b != nullptr; }
};
template<class NODE>
struct COPY_PAIR {
    NODE* to;
    const NODE* from;
    explicit operator bool() const { return to != nullptr && from != nullptr; }
};

template<class OPERATION, class RECORD_TYPE, class HANDLE, std::size_t... PLACES>
bool run_on_field(std::size_t place, const RECORD_TYPE& record, OPERATION& operation, HANDLE node, HANDLE& child,
                  std::index_sequence<PLACES...> /*all*/) {
    bool goes_on = true;
    ((PLACES == place ? void(goes_on = operation(field_at<PLACES>(record.fields), node, child)) : void()), ...);
    return goes_on;
}

/// Calls `operation(field, node, child)` for every field of the tree in file order, a child's fields in
/// its parent's place for it. An operation that gives false ends the run.
template<class NODE, class HANDLE, class OPERATION>
void run_nested(HANDLE top, OPERATION& operation) {
    static constexpr auto RECORD_OF_NODE = NODE::record();
    constexpr std::size_t FIELD_COUNT = RECORD_OF_NODE.fields.SIZE;
    struct FRAME {
        HANDLE node;
        std::size_t next_field;
    };
    ARRAY<FRAME> frames;
    frames.push_back({top, 0});
    while (!frames.empty()) {
        FRAME& frame = frames.back();
        if (frame.next_field == FIELD_COUNT) {
            frames.pop_back();
            if constexpr (requires { operation.leave(); }) {
                if (!frames.empty()) operation.leave();
            }
            continue;
        }
        HANDLE child{};
        if (!run_on_field(frame.next_field++, RECORD_OF_NODE, operation, frame.node, child,
                          std::make_index_sequence<FIELD_COUNT>()))
            return;
        if (child) frames.push_back({child, 0});
    }
}

template<class NODE>
struct NESTED_LOAD {
    VOR2_INPUT_BUFFER& buffer;
    f32 version;
    bool result = true;

    template<class FIELD_TYPE>
    bool operator()(const FIELD_TYPE& field, NODE* node, NODE*& child) {
        bool loaded = true;
        if constexpr (IS_NESTED<FIELD_TYPE>) {
            auto& object = node->*field.member;
            loaded = read_optional_head(object, buffer);
            child = as_node<NODE>(object.get());
            if (object && child == nullptr) loaded = object->load(buffer, version);
        } else {
            loaded = !field.rules.is_read(version) || field.load(*node, buffer, version);
        }
        result = result && (loaded || !field.rules.load_counts);
        if (!buffer.failed()) return true;
        result = false;
        return buffer.fail_within(field.name);
    }
};

template<class NODE>
struct NESTED_SAVE {
    VOR2_WRITE_STREAM& stream;
    bool result = true;

    template<class FIELD_TYPE>
    bool operator()(const FIELD_TYPE& field, const NODE* node, const NODE*& child) {
        bool saved = true;
        if constexpr (IS_NESTED<FIELD_TYPE>) {
            const auto* object = (node->*field.member).get();
            saved = write_optional_head(object, stream);
            child = as_node<NODE>(object);
            if (object != nullptr && child == nullptr) saved = object->save(stream) && saved;
        } else {
            saved = !field.rules.is_written || field.save(*node, stream);
        }
        result = result && (saved || !field.rules.save_counts);
        return true;
    }
};

template<class NODE>
struct NESTED_EQUAL {
    using PAIR = NODE_PAIR<const NODE>;
    bool result = true;

    template<class FIELD_TYPE>
    bool operator()(const FIELD_TYPE& field, PAIR pair, PAIR& child) {
        if (!field.rules.is_compared) return true;
        if constexpr (IS_NESTED<FIELD_TYPE>) {
            const auto* a = (pair.a->*field.member).get();
            const auto* b = (pair.b->*field.member).get();
            child = {as_node<NODE>(a), as_node<NODE>(b)};
            result = a == nullptr || b == nullptr ? a == b : child || a->equals(*b);
        } else {
            result = field.equal(*pair.a, *pair.b);
        }
        return result;
    }
};

template<class NODE>
struct NESTED_COPY {
    using PAIR = COPY_PAIR<NODE>;

    template<class FIELD_TYPE>
    bool operator()(const FIELD_TYPE& field, PAIR pair, PAIR& child) {
        if constexpr (IS_NESTED<FIELD_TYPE>) {
            const auto& source = pair.from->*field.member;
            if (const NODE* node = as_node<NODE>(source.get())) {
                child = {new NODE(), node};
                (pair.to->*field.member).reset(child.to);
            } else {
                pair.to->*field.member = source;
            }
        } else {
            field.copy(*pair.to, *pair.from);
        }
        return true;
    }
};

template<class NODE, class STEP>
struct NESTED_WALK {
    const STEP& step;

    template<class FIELD_TYPE>
    bool operator()(const FIELD_TYPE& field, NODE* node, NODE*& child) {
        if (!field.rules.is_walked) return true;
        if constexpr (IS_NESTED<FIELD_TYPE>) {
            auto* object = (node->*field.member).get();
            child = as_node<NODE>(object);
            if (object != nullptr && child == nullptr) step(*object);
        } else {
            field.walk(*node, step);
        }
        return true;
    }
};

template<class NODE>
struct NESTED_DESCRIPTION {
    RECORD_VISITOR& visitor;

    template<class FIELD_TYPE>
    bool operator()(const FIELD_TYPE& field, const NODE* node, const NODE*& child) {
        if (!field.rules.is_written) return true;
        if constexpr (IS_NESTED<FIELD_TYPE>) {
            child = as_node<NODE>((node->*field.member).get());
            if (child != nullptr) {
                visitor.begin_object(field.name, child->class_name());
            } else {
                OPTIONAL_KIND::describe(node->*field.member, field.name, visitor);
            }
        } else {
            field.describe(*node, visitor);
        }
        return true;
    }
    void leave() { visitor.end_object(); }
};

/// Moves the node's children to the end of the list.
template<class NODE, class FAMILY>
void take_children(NODE& node, ARRAY<OWNED<FAMILY>>& children) {
    static constexpr auto RECORD_OF_NODE = NODE::record();
    RECORD_OF_NODE.each([&](const auto& field) {
        if constexpr (IS_NESTED<std::remove_cvref_t<decltype(field)>>) {
            if (node.*field.member) children.push_back(std::move(node.*field.member));
        }
    });
}

} // namespace VOR2_LOADER::detail
