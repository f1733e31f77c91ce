#pragma once

#include "headless/graph/evaluation.h"

#include <array>

namespace headless {

/// An array input as a formula gets it: the elements that have a value or a connection, in order of index.
class Elements {
public:
    /// A component of not less than 0 means that child of each element.
    Elements(EvaluationContext& context, const Plug& array, int component);

    const std::vector<int>& indices() const { return indices_; }
    double number(int index) const { return context_.number(at(index)); }
    Matrix matrix(int index) const { return context_.matrix(at(index)); }
    Value value(int index) const { return context_.evaluate(at(index)); }
    /// Of a compound's child, by its place.
    Value value(int index, int child) const { return context_.evaluate(array_.element(index).child(child)); }
    Matrix matrix(int index, int child) const { return context_.matrix(array_.element(index).child(child)); }

private:
    Plug at(int index) const;

    EvaluationContext& context_;
    Plug array_;
    int component_;
    std::vector<int> indices_;
};

namespace detail {

Quaternion quaternion_at(EvaluationContext& context, const Plug& plug);

// An input as the type of a formula's argument wants it.
template<typename T>
T input(EvaluationContext& context, Node& node, AttributeId id, int component) {
    const Plug plug = node.plug(id);
    const auto single = [&] {
        return component >= 0 && plug.is_compound() && !plug.is_array() ? plug.child(component) : plug;
    };
    if constexpr (std::is_same_v<T, Elements>)
        return Elements(context, plug, component);
    else if constexpr (std::is_same_v<T, Vector3>)
        return context.vector(plug);
    else if constexpr (std::is_same_v<T, Matrix>)
        return context.matrix(plug);
    else if constexpr (std::is_same_v<T, Quaternion>)
        return quaternion_at(context, plug);
    else if constexpr (std::is_same_v<T, RotateOrder>)
        return rotate_order(context.evaluate(plug).integer());
    else if constexpr (std::is_same_v<T, bool>)
        return context.evaluate(plug).boolean();
    else if constexpr (std::is_same_v<T, std::int64_t>)
        return context.evaluate(plug).integer();
    else if constexpr (std::is_same_v<T, Value>)
        return context.evaluate(plug);
    else {
        static_assert(std::is_same_v<T, double>);
        return context.number(single());
    }
}

inline Value output(const Quaternion& q) {
    return Value::Doubles{q.x, q.y, q.z, q.w};
}
template<typename T>
Value output(const T& value) {
    return value;
}

template<typename R, typename... A, std::size_t... I>
Value apply(R (*formula)(A...), EvaluationContext& context, Node& node, const std::vector<AttributeId>& ids,
            int component, std::index_sequence<I...>) {
    return output(formula(input<std::decay_t<A>>(context, node, ids[I], component)...));
}

} // namespace detail

/// Tells a kind of node: its attributes in order, and beside each output what it is.
///
///     NodeKind(types, "clamp", "node", MFn::kClampColor)
///         .colour("min", "mn").colour("max", "mx").colour("input", "ip")
///         .colour("output", "op").from({"mn", "mx", "ip"}, [](double low, double high, double value) { ... });
///
/// A formula is a function without a state. The types of its arguments say how the inputs are read: a `double` is a
/// number or, of a triple, the component that is asked for; Vector3, Matrix, Quaternion, RotateOrder, bool,
/// std::int64_t and Value are the whole; Elements is an array. One that takes no triple whole and gives a number is
/// worked out component by component.
class NodeKind {
public:
    NodeKind(NodeTypes& types, std::string_view name, std::string_view base, MFn::Type api_type)
        : type_(types.add(name, base, api_type)) {}

    NodeKind& add(std::string_view long_name, std::string_view short_name, AttributeKind kind, Value value = {});
    NodeKind& boolean(std::string_view long_name, std::string_view short_name, bool value = false);
    NodeKind& integer(std::string_view long_name, std::string_view short_name, int value = 0);
    NodeKind& enumeration(std::string_view long_name, std::string_view short_name, int value = 0);
    NodeKind& number(std::string_view long_name, std::string_view short_name, double value = 0.0);
    NodeKind& distance(std::string_view long_name, std::string_view short_name, double value = 0.0);
    NodeKind& angle(std::string_view long_name, std::string_view short_name, double value = 0.0);
    NodeKind& time(std::string_view long_name, std::string_view short_name);
    NodeKind& text(std::string_view long_name, std::string_view short_name);
    NodeKind& matrix(std::string_view long_name, std::string_view short_name);
    NodeKind& message(std::string_view long_name, std::string_view short_name);
    NodeKind& untyped(std::string_view long_name, std::string_view short_name);
    /// A compound with a child for each suffix, given as the long name's and the short name's ("Xx").
    NodeKind& parts(std::string_view long_name, std::string_view short_name, AttributeKind kind,
                    std::initializer_list<std::string_view> suffixes, std::initializer_list<double> values = {});
    NodeKind& vector(std::string_view long_name, std::string_view short_name,
                     AttributeKind kind = AttributeKind::number, double value = 0.0);
    NodeKind& colour(std::string_view long_name, std::string_view short_name, double value = 0.0);
    NodeKind& quaternion(std::string_view long_name, std::string_view short_name);
    /// What is told up to the matching `end` is part of it.
    NodeKind& compound(std::string_view long_name, std::string_view short_name);
    NodeKind& array_of_compounds(std::string_view long_name, std::string_view short_name);
    NodeKind& end();
    NodeKind& array();  ///< what was told last is an array
    NodeKind& output(); ///< what was told last is an output

    /// What was told last is an output with that formula over those inputs.
    template<typename Formula, std::size_t N>
    NodeKind& from(const char* const (&inputs)[N], Formula formula) {
        return follow(+formula, inputs);
    }
    NodeKind& computes(Compute compute);
    NodeKind& keeps(MakeNodeData make);
    NodeKind& falls_short(Shortfall shortfall);
    NodeKind& turns(const JointTurner& turner); ///< joints; `turner` lives as long as the process

private:
    template<typename R, typename... A, std::size_t N>
    NodeKind& follow(R (*formula)(A...), const char* const (&names)[N]) {
        static_assert(N == sizeof...(A), "a name for each argument");
        OutputRule rule;
        rule.output = last_;
        for (const char* name : names) rule.inputs.push_back(id_of(name));
        constexpr bool takes_number =
            (std::is_same_v<std::decay_t<A>, double> || ...) || (std::is_same_v<std::decay_t<A>, Elements> || ...);
        rule.by_component = takes_number && std::is_same_v<R, double> && !type_.attributes()[last_].children.empty();
        rule.value = [formula, ids = rule.inputs](EvaluationContext& context, Node& node, int component) {
            return detail::apply(formula, context, node, ids, component, std::index_sequence_for<A...>());
        };
        type_.add_rule(std::move(rule));
        return *this;
    }
    AttributeId id_of(const char* name) const;

    NodeType& type_;
    AttributeId last_ = no_attribute;
    std::vector<AttributeId> open_;
};

} // namespace headless
