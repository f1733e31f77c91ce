#include "headless/animation/keying.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace headless {
namespace {

constexpr int max_hops = 64;

// What is connected to the plug, or to the compound around it, at the same place within.
Plug source_feeding(const Plug& plug) {
    if (plug.node->inputs().empty()) return {};
    if (const Plug direct = plug.node->source_of(plug.key)) return direct;
    const Plug around = plug.parent();
    const Plug source = around ? plug.node->source_of(around.key) : Plug{};
    if (!source) return {};
    const auto& children = around.attribute().children;
    const auto at = std::ranges::find(children, plug.key.attribute);
    return source.child(static_cast<int>(at - children.begin()));
}

// Where plain connections to the plug begin: the plug itself when nothing is connected to it.
Plug driver_of(Plug plug) {
    for (int hops = 0; hops < max_hops; ++hops) {
        const Plug source = source_feeding(plug);
        if (!source) break;
        plug = source;
    }
    return plug;
}

const char* curve_type(AttributeKind kind) {
    switch (kind) {
    case AttributeKind::distance:
        return "animCurveTL";
    case AttributeKind::angle:
        return "animCurveTA";
    case AttributeKind::time:
        return "animCurveTT";
    case AttributeKind::boolean:
    case AttributeKind::integer:
    case AttributeKind::enumeration:
    case AttributeKind::number:
    case AttributeKind::untyped:
        return "animCurveTU";
    default:
        return nullptr;
    }
}

bool holds_between_keys(AttributeKind kind) {
    return kind == AttributeKind::boolean || kind == AttributeKind::integer || kind == AttributeKind::enumeration;
}

Error cannot_key(const Plug& plug, std::string_view why) {
    return Error{"The attribute '" + plug.name() + "' " + std::string(why) + " and cannot be keyed"};
}

// Where a plug that can be keyed is driven from.
Result<Plug> keyable_driver(const Plug& plug) {
    if (!plug) return Error{"There is no such attribute to be keyed"};
    const Attribute& attribute = plug.attribute();
    const bool single = plug.key.depth == attribute.array_levels;
    const bool number = curve_type(attribute.kind) && single && !attribute.output;
    if (!number || (attribute.kind == AttributeKind::untyped && !plug.node->get(plug.key).is_number()))
        return cannot_key(plug, "holds no number");
    if (plug.is_locked()) return cannot_key(plug, "is locked");
    const Plug driver = driver_of(plug);
    if (driver.attribute().output && !is_time_curve(*driver.node)) return cannot_key(plug, "is driven by another node");
    return driver;
}

// The curve that is a driver; null for the plug's own value or another plug's. A driven curve has no time to key at.
Node* curve_that_is(const Plug& driver, const Plug& driven) {
    return driver != driven && is_time_curve(*driver.node) ? driver.node : nullptr;
}

// A plain connection ends at the plug that holds the value, the driver, and there the curve comes in.
Result<Node*> make_curve(Scene& scene, const Plug& plug, const Plug& driver) {
    const AttributeKind kind = plug.attribute().kind;
    const std::string path = plug.path();
    const std::string name = std::string(plug.node->short_name()) + "_" + path.substr(path.rfind('.') + 1);
    auto made = scene.create_node(curve_type(kind), name); // the scene makes "weight_0_" of "weight[0]"
    if (!made) return made;
    Node& curve = **made;
    CurveData::of(curve)->edit().set_tangent(Tangent::automatic);
    if (Result<void> done = scene.connect(curve.plug(curve.find_attribute("output")), driver); !done) {
        scene.remove_node(curve);
        return done.error();
    }
    return &curve;
}

void put_key(AnimCurve& curve, double time, double value, AttributeKind kind) {
    if (const auto at = curve.find(time, same_key_time)) {
        curve.set_value(*at, value);
        return;
    }
    const std::size_t at = curve.first_at_or_behind(time);
    if (at == curve.size()) {
        curve.append(time, value);
    } else {
        CurveKey key;
        key.time = time;
        key.value = value;
        curve.insert(at, key);
    }
    if (holds_between_keys(kind)) curve.set_types(at, Tangent::by_default, Tangent::step);
}

// The children of compounds in place of them.
void add_single(const Plug& plug, std::vector<Plug>& out) {
    if (!plug || plug.attribute().children.empty() || plug.is_array()) {
        out.push_back(plug);
        return;
    }
    for (const AttributeId id : plug.attribute().children) add_single(plug.child(id), out);
}

} // namespace

Node* curve_of(const Plug& plug) {
    return curve_that_is(driver_of(plug), plug);
}

Result<Node*> curve_for_keying(Scene& scene, const Plug& plug) {
    const Result<Plug> driver = keyable_driver(plug);
    if (!driver) return driver.error();
    if (Node* curve = curve_that_is(*driver, plug)) return curve;
    return make_curve(scene, plug, *driver);
}

Result<void> key_plugs(Scene& scene, std::span<const Plug> plugs, double time) {
    if (!std::isfinite(time)) return Error{"A key needs a finite time"};
    std::vector<Plug> singles;
    singles.reserve(plugs.size());
    for (const Plug& plug : plugs) add_single(plug, singles);
    struct NewKey {
        double value;
        Node* curve; // null where one must be made
    };
    std::vector<NewKey> keys;
    keys.reserve(singles.size());
    for (const Plug& plug : singles) {
        const Result<Plug> driver = keyable_driver(plug);
        if (!driver) return driver.error();
        keys.push_back({scene.evaluate(plug).number(), curve_that_is(*driver, plug)});
        if (!std::isfinite(keys.back().value)) return cannot_key(plug, "has no finite value");
    }
    const AnimCurve* first = nullptr;
    for (std::size_t i = 0; i < singles.size(); ++i) {
        const Result<Node*> node = keys[i].curve ? keys[i].curve : curve_for_keying(scene, singles[i]);
        if (!node) return node.error();
        AnimCurve& curve = CurveData::of(**node)->edit();
        if (first && curve.size() == 0) curve.share_times(*first);
        put_key(curve, time, keys[i].value, singles[i].attribute().kind);
        (*node)->touch();
        if (!first) first = &curve;
    }
    scene.modified = true;
    return {};
}

Result<void> key_plug_with(Scene& scene, const Plug& plug, double time, double value) {
    if (!std::isfinite(time) || !std::isfinite(value)) return Error{"A key needs a finite time and value"};
    const Result<Node*> node = curve_for_keying(scene, plug);
    if (!node) return node.error();
    put_key(CurveData::of(**node)->edit(), time, value, plug.attribute().kind);
    (*node)->touch();
    scene.modified = true;
    return {};
}

void set_key_tangents(const Plug& plug, double time, std::optional<Tangent> in, std::optional<Tangent> out) {
    Node* node = curve_of(plug);
    CurveData* data = node ? CurveData::of(*node) : nullptr;
    const auto at = data ? data->keys().find(time, same_key_time) : std::nullopt;
    if (!at) return;
    const CurveKey key = data->keys().key(*at);
    data->edit().set_types(*at, in.value_or(key.in), out.value_or(key.out));
    node->touch();
}

void set_keys(Node& node, const KeyTimes& times, std::vector<double> values, Tangent tangent) {
    CurveData* data = CurveData::of(node);
    if (!data) return;
    AnimCurve& curve = data->edit();
    curve.assign(times, std::move(values), tangent);
    if (!curve.ordered()) curve = curve.in_order();
    node.touch();
    node.scene().modified = true;
}

Result<Node*> set_keys(Scene& scene, const Plug& plug, const KeyTimes& times, std::vector<double> values,
                       Tangent tangent) {
    Result<Node*> curve = curve_for_keying(scene, plug);
    if (curve) set_keys(**curve, times, std::move(values), tangent);
    return curve;
}

std::size_t cut_keys(Scene& scene, const Plug& plug, double first, double last) {
    Node* node = curve_of(plug);
    if (!node || !CurveData::of(*node)) return 0;
    const AnimCurve& keys = *keys_of(plug);
    const std::size_t from = keys.first_at_or_behind(first);
    const std::size_t to = keys.first_at_or_behind(std::nextafter(last, std::numeric_limits<double>::infinity()));
    if (to <= from) return 0;
    scene.modified = true;
    if (to - from == keys.size()) {
        const Plug fed = driver_of(plug);
        const double value = scene.evaluate(plug).number();
        const auto destinations = node->outputs();
        scene.remove_node(*node);
        for (const auto& [source, destination] : destinations) {
            if (source == fed.key) destination.node->set(destination.key, value);
        }
        return to - from;
    }
    CurveData::of(*node)->edit().erase(from, to);
    node->touch();
    return to - from;
}

const AnimCurve* keys_of(const Plug& plug) {
    const Node* curve = curve_of(plug);
    const CurveData* data = curve ? CurveData::of(*curve) : nullptr;
    return data ? &data->keys() : nullptr;
}

std::vector<Plug> keyed_plugs(Node& node) {
    std::vector<Plug> singles, out;
    for (const auto& [destination, source] : node.inputs()) add_single({&node, destination}, singles);
    for (const Plug& plug : singles) {
        if (curve_of(plug)) out.push_back(plug);
    }
    return out;
}

} // namespace headless
