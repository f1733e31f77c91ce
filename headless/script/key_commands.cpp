// Setting, asking and cutting keys.
#include "headless/animation/keying.h"
#include "headless/script/commands.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace headless {
namespace {

// What is keyed: plugs named as objects ("a.tx"), or the asked attributes of the nodes, or else all that a key of
// the node would take.
class Targets {
public:
    Targets(Session& session, const Arguments& arguments) : scene_(session.scene()), arguments_(arguments) {}

    Result<std::vector<Plug>> plugs(bool keyed_only) {
        std::vector<Plug> out;
        if (arguments_.count() == 0) {
            for (const SelectionItem& item : scene_.selection.items()) {
                if (Result<void> done = add(item, keyed_only, out); !done) return done.error();
            }
        }
        for (std::size_t i = 0; i < arguments_.count(); ++i) {
            const Result<std::vector<SelectionItem>> found = scene_.resolve(arguments_[i]);
            if (!found) return found.error();
            for (const SelectionItem& item : *found) {
                if (Result<void> done = add(item, keyed_only, out); !done) return done.error();
            }
        }
        return out;
    }

private:
    Result<void> add(const SelectionItem& item, bool keyed_only, std::vector<Plug>& out) {
        Node& node = *scene_.find(item.node);
        if (item.plug) {
            add_simple({&node, *item.plug}, out);
            return {};
        }
        bool asked = false;
        for (std::size_t use = 0; const std::string* name = arguments_.text("at", use); ++use) {
            asked = true;
            if (const Plug plug = node.find_plug(*name)) add_simple(plug, out);
        }
        if (asked) return {};
        const std::vector<Plug> all = keyed_only ? keyed_plugs(node) : keyable_plugs(node);
        out.insert(out.end(), all.begin(), all.end());
        return {};
    }

    static void add_simple(const Plug& plug, std::vector<Plug>& out) {
        if (!plug.is_compound()) {
            out.push_back(plug);
            return;
        }
        for (const AttributeId id : plug.attribute().children) out.push_back(plug.child(id));
    }

    // A transform's channels and what was declared keyable, but for what is locked.
    static std::vector<Plug> keyable_plugs(Node& node) {
        std::vector<Plug> out;
        if (node.type().is_transform()) {
            for (const char* name : {"visibility", "translate", "rotate", "scale"})
                add_simple(node.find_plug(name), out);
        }
        for (AttributeId id = 0; id < node.attribute_count(); ++id) {
            const Attribute& attribute = node.attribute(id);
            if (attribute.dynamic && attribute.array_levels == 0 && node.flags(id).keyable == true)
                add_simple(node.plug(id), out);
        }
        std::erase_if(out, [](const Plug& plug) {
            return plug.is_locked() || plug.node->flags(plug.key.attribute).keyable == false;
        });
        return out;
    }

    Scene& scene_;
    const Arguments& arguments_;
};

double inner_value(const Plug& plug, double stated, const Scene& scene) {
    switch (plug.attribute().kind) {
    case AttributeKind::distance:
        return stated * scene.linear_unit.centimetres;
    case AttributeKind::angle:
        return stated * scene.angle_unit.radians;
    case AttributeKind::time:
        return scene.time_unit.to_seconds(stated);
    default:
        return stated;
    }
}

Result<std::vector<double>> times_of(Session& session, const Arguments& arguments) {
    std::vector<double> out;
    for (const std::string& text : arguments.texts("t")) {
        const Result<double> time = time_of(text);
        if (!time) return time.error();
        out.push_back(*time);
    }
    if (out.empty()) out.push_back(session.scene().current_time());
    return out;
}

Result<std::optional<Tangent>> tangent_of(const Arguments& arguments, std::string_view flag) {
    const std::string* name = arguments.text(flag);
    if (!name) return std::optional<Tangent>();
    const std::optional<Tangent> known = tangent_by_name(*name);
    if (!known) return Error{"'" + *name + "' is no type of tangent"};
    return known;
}

Result<CommandResult> set_keyframe(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    const Result<std::vector<Plug>> plugs = Targets(session, arguments).plugs(false);
    if (!plugs) return plugs.error();
    if (plugs->empty()) return Error{"Nothing to key: no attribute of a named or selected object fits"};
    const std::optional<double> value = arguments.number("v");
    const Result<std::vector<double>> times = times_of(session, arguments);
    if (!times) return times.error();
    const Result<std::optional<Tangent>> in = tangent_of(arguments, "itt"), out = tangent_of(arguments, "ott");
    for (const auto* tangent : {&in, &out}) {
        if (!*tangent) return tangent->error();
    }
    for (const double time : *times) {
        if (!value) {
            if (Result<void> done = key_plugs(scene, *plugs, time); !done) return done.error();
        }
        for (const Plug& plug : *plugs) {
            if (value) {
                const Result<void> done = key_plug_with(scene, plug, time, inner_value(plug, *value, scene));
                if (!done) return done.error();
            }
            if (*in || *out) set_key_tangents(plug, time, *in, *out);
        }
    }
    return integer_result(static_cast<std::int64_t>(times->size() * plugs->size()));
}

struct Range {
    double first = -std::numeric_limits<double>::infinity(), last = std::numeric_limits<double>::infinity();
    bool holds(double time) const { return time >= first - same_key_time && time <= last + same_key_time; }
};

// "5", "1:24", "1:" and ":24".
Result<Range> range_of(const Arguments& arguments) {
    Range out;
    const std::string* text = arguments.text("t");
    if (!text) return out;
    const std::size_t colon = text->find(':');
    const std::string first = text->substr(0, colon);
    const std::string last = colon == std::string::npos ? first : text->substr(colon + 1);
    for (const auto& [word, end] : {std::pair<const std::string&, double&>{first, out.first}, {last, out.last}}) {
        if (word.empty()) continue;
        const Result<double> time = time_of(word);
        if (!time) return time.error();
        end = *time;
    }
    return out;
}

double shown_value(const Plug& plug, double value, const Scene& scene) {
    return value / inner_value(plug, 1.0, scene);
}

Result<CommandResult> keyframe(Session& session, const Arguments& arguments) {
    if (!arguments.query()) return Error{"keyframe answers questions (-query); keys are set by setKeyframe"};
    Scene& scene = session.scene();
    const Result<std::vector<Plug>> plugs = Targets(session, arguments).plugs(true);
    if (!plugs) return plugs.error();
    const Result<Range> range = range_of(arguments);
    if (!range) return range.error();
    std::vector<double> times, values;
    std::vector<std::string> curves;
    for (const Plug& plug : *plugs) {
        const AnimCurve* keys = keys_of(plug);
        if (!keys) continue;
        curves.push_back(scene.unique_name_of(*curve_of(plug)));
        for (std::size_t i = 0; i < keys->size(); ++i) {
            if (!range->holds(keys->times()[i])) continue;
            times.push_back(scene.time_unit.from_seconds(keys->times()[i]));
            values.push_back(shown_value(plug, keys->values()[i], scene));
        }
    }
    if (arguments.has("kc")) return integer_result(static_cast<std::int64_t>(times.size()));
    if (arguments.has("vc")) return numbers_result(std::move(values));
    if (arguments.has("n")) return texts_result(std::move(curves));
    return numbers_result(std::move(times));
}

Result<CommandResult> cut_key(Session& session, const Arguments& arguments) {
    const Result<std::vector<Plug>> plugs = Targets(session, arguments).plugs(true);
    if (!plugs) return plugs.error();
    const Result<Range> range = range_of(arguments);
    if (!range) return range.error();
    std::int64_t count = 0;
    for (const Plug& plug : *plugs)
        count += static_cast<std::int64_t>(
            cut_keys(session.scene(), plug, range->first - same_key_time, range->last + same_key_time));
    return integer_result(count);
}

constexpr CommandRow key_rows[] = {
    {"setKeyframe",
     "at,attribute=s* t,time=s* v,value=d itt,inTangentType=s ott,outTangentType=s bd,breakdown=b s,shape=b "
     "hi,hierarchy=s cp,controlPoints=b i,insert mr,minimizeRotation",
     set_keyframe},
    {"keyframe", "at,attribute=s*! t,time=s*! kc,keyframeCount vc,valueChange tc,timeChange n,name", keyframe},
    {"cutKey", "at,attribute=s* t,time=s* cl,clear s,shape=b hi,hierarchy=s", cut_key},
};

} // namespace

std::span<const CommandRow> key_commands() {
    return key_rows;
}

} // namespace headless
