#include "headless/nodes/node_kind.h"

#include <stdexcept>

namespace headless {

Elements::Elements(EvaluationContext& context, const Plug& array, int component)
    : context_(context), array_(array), component_(component), indices_(array.node->existing_indices(array.key)) {}

Plug Elements::at(int index) const {
    const Plug element = array_.element(index);
    return component_ >= 0 && element.is_compound() ? element.child(component_) : element;
}

Quaternion detail::quaternion_at(EvaluationContext& context, const Plug& plug) {
    const auto part = [&](int i) { return context.number(plug.child(i)); };
    return {part(0), part(1), part(2), part(3)};
}

NodeKind& NodeKind::add(std::string_view long_name, std::string_view short_name, AttributeKind kind, Value value) {
    last_ = type_.add(long_name, short_name, kind, std::move(value), open_.empty() ? no_attribute : open_.back());
    return *this;
}

NodeKind& NodeKind::boolean(std::string_view long_name, std::string_view short_name, bool value) {
    return add(long_name, short_name, AttributeKind::boolean, value);
}
NodeKind& NodeKind::integer(std::string_view long_name, std::string_view short_name, int value) {
    return add(long_name, short_name, AttributeKind::integer, value);
}
NodeKind& NodeKind::enumeration(std::string_view long_name, std::string_view short_name, int value) {
    return add(long_name, short_name, AttributeKind::enumeration, value);
}
NodeKind& NodeKind::number(std::string_view long_name, std::string_view short_name, double value) {
    return add(long_name, short_name, AttributeKind::number, value);
}
NodeKind& NodeKind::distance(std::string_view long_name, std::string_view short_name, double value) {
    return add(long_name, short_name, AttributeKind::distance, value);
}
NodeKind& NodeKind::angle(std::string_view long_name, std::string_view short_name, double value) {
    return add(long_name, short_name, AttributeKind::angle, value);
}
NodeKind& NodeKind::time(std::string_view long_name, std::string_view short_name) {
    return add(long_name, short_name, AttributeKind::time);
}
NodeKind& NodeKind::text(std::string_view long_name, std::string_view short_name) {
    return add(long_name, short_name, AttributeKind::text);
}
NodeKind& NodeKind::matrix(std::string_view long_name, std::string_view short_name) {
    return add(long_name, short_name, AttributeKind::matrix);
}
NodeKind& NodeKind::message(std::string_view long_name, std::string_view short_name) {
    return add(long_name, short_name, AttributeKind::message);
}
NodeKind& NodeKind::untyped(std::string_view long_name, std::string_view short_name) {
    return add(long_name, short_name, AttributeKind::untyped);
}

NodeKind& NodeKind::parts(std::string_view long_name, std::string_view short_name, AttributeKind kind,
                          std::initializer_list<std::string_view> suffixes, std::initializer_list<double> values) {
    add(long_name, short_name, AttributeKind::compound);
    const AttributeId whole = last_;
    auto value = values.begin();
    for (const std::string_view suffix : suffixes) {
        type_.add(std::string(long_name) + suffix[0], std::string(short_name) + suffix[1], kind,
                  value == values.end() ? 0.0 : *value++, whole);
    }
    return *this;
}

NodeKind& NodeKind::vector(std::string_view long_name, std::string_view short_name, AttributeKind kind, double value) {
    return parts(long_name, short_name, kind, {"Xx", "Yy", "Zz"}, {value, value, value});
}
NodeKind& NodeKind::colour(std::string_view long_name, std::string_view short_name, double value) {
    return parts(long_name, short_name, AttributeKind::number, {"Rr", "Gg", "Bb"}, {value, value, value});
}
NodeKind& NodeKind::quaternion(std::string_view long_name, std::string_view short_name) {
    return parts(long_name, short_name, AttributeKind::number, {"Xx", "Yy", "Zz", "Ww"}, {0, 0, 0, 1});
}

NodeKind& NodeKind::compound(std::string_view long_name, std::string_view short_name) {
    add(long_name, short_name, AttributeKind::compound);
    open_.push_back(last_);
    return *this;
}
NodeKind& NodeKind::array_of_compounds(std::string_view long_name, std::string_view short_name) {
    compound(long_name, short_name);
    return array();
}
NodeKind& NodeKind::end() {
    last_ = open_.back();
    open_.pop_back();
    return *this;
}

NodeKind& NodeKind::array() {
    type_.make_array(last_);
    return *this;
}
NodeKind& NodeKind::output() {
    type_.make_output(last_);
    return *this;
}

NodeKind& NodeKind::computes(Compute compute) {
    type_.compute = compute;
    return *this;
}
NodeKind& NodeKind::keeps(MakeNodeData make) {
    type_.make_data = make;
    return *this;
}
NodeKind& NodeKind::falls_short(Shortfall shortfall) {
    type_.shortfall = shortfall;
    return *this;
}
NodeKind& NodeKind::turns(const JointTurner& turner) {
    type_.turner = &turner;
    return *this;
}

AttributeId NodeKind::id_of(const char* name) const {
    const AttributeId id = type_.find(name);
    if (id == no_attribute) throw std::logic_error(type_.name() + " has no attribute '" + name + "' to follow from");
    return id;
}

} // namespace headless
