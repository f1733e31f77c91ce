// Attributes: their values, their marks, new ones, and connections.
#include "headless/script/add_attribute.h"
#include "headless/script/commands.h"

#include <algorithm>

namespace headless {
namespace {

Result<void> store_in_scene(const Plug& plug, const Value& value) {
    return plug.node->scene().set(plug, value);
}

Error no_attribute_error(std::string_view name) {
    return Error{"No attribute was specified or found: '" + std::string(name) + "'"};
}

// The plug of a range is its first element's.
Result<Plug> plug_named(Scene& scene, const std::string& name) {
    const std::size_t colon = name.ends_with(']') ? name.find(':', name.rfind('[')) : std::string::npos;
    Result<Plug> plug = scene.find_plug(colon == std::string::npos ? name : name.substr(0, colon) + "]");
    if (plug) return plug;
    if (name.find('.') == std::string::npos) return no_attribute_error(name);
    return Error{"The object '" + name + "' doesn't exist"};
}

Result<CommandResult> set_attr(Session& session, std::span<const Word> words) {
    Scene& scene = session.scene();
    AttributeSetting setting;
    if (Result<void> taken = parse_attribute_setting(words, setting); !taken) return taken.error();
    const std::optional<ListRange> lists = list_range(setting.name);
    const Result<Plug> plug = plug_named(scene, lists ? lists->path : std::string(setting.name));
    if (!plug) return plug.error();
    // A lock that is given with a value holds from then on, and one that is lifted is lifted first.
    if (setting.locked == false) apply_marks(*plug, setting);
    const bool marks_only = setting.locked || setting.keyable || setting.channel_box;
    if (setting.values.empty() && !marks_only) return Error{"Error reading data element: no value is given"};
    if (Result<void> stored = store_values(*plug, setting, lists, ValueUnits::of(scene), store_in_scene); !stored)
        return stored.error();
    apply_marks(*plug, setting);
    return CommandResult();
}

double in_scene_units(AttributeKind kind, double value, const Scene& scene) {
    switch (kind) {
    case AttributeKind::distance:
        return value / scene.linear_unit.centimetres;
    case AttributeKind::angle:
        return value / scene.angle_unit.radians;
    case AttributeKind::time:
        return scene.time_unit.from_seconds(value);
    default:
        return value;
    }
}

Result<CommandResult> compound_result(Scene& scene, const Plug& plug) {
    std::vector<double> out;
    for (const AttributeId id : plug.attribute().children) {
        const Plug child = plug.child(id);
        const Value value = scene.evaluate(child);
        if (!value.is_number()) return Error{"The attribute '" + plug.name() + "' holds no numbers"};
        out.push_back(in_scene_units(child.attribute().kind, value.number(), scene));
    }
    return numbers_result(std::move(out));
}

Result<CommandResult> value_result(Scene& scene, const Plug& plug) {
    const Attribute& attribute = plug.attribute();
    if (attribute.kind == AttributeKind::message) return Error{"Message attributes have no data values."};
    if (plug.is_array()) return Error{"'" + plug.name() + "' is a whole array; name one of its elements"};
    if (!attribute.children.empty()) return compound_result(scene, plug);
    const Value value = scene.evaluate(plug);
    if (value.empty()) return CommandResult();
    if (const auto* text = value.get_if<std::string>()) return text_result(*text);
    if (const auto* matrix = value.get_if<Matrix>())
        return numbers_result(std::vector<double>(&matrix->m[0][0], &matrix->m[0][0] + 16));
    if (const auto* triple = value.get_if<Vector3>()) return numbers_result({triple->x, triple->y, triple->z});
    if (const auto* numbers = value.get_if<Value::Doubles>()) return numbers_result(*numbers);
    if (const auto* texts = value.get_if<Value::Texts>()) return texts_result(*texts);
    if (const auto* raw = value.get_if<RawTokens>()) return texts_result(raw->tokens);
    if (value.get_if<bool>() || value.get_if<std::int64_t>()) return integer_result(value.integer());
    return number_result(in_scene_units(attribute.kind, value.number(), scene));
}

// A compound goes by the data that holds its parts: three numbers have a name for it, all else has one in common.
std::string shown_type(const Attribute& attribute) {
    const std::string_view word = type_word(attribute);
    if (word != "compound") return std::string(word);
    return attribute.data_type.empty() && attribute.children.size() == 3 ? "double3" : "TdataCompound";
}

// Looks at the scene at another time for as long as it stands.
class TimeScope {
public:
    TimeScope(Scene& scene, double seconds) : scene_(scene), before_(scene.current_time()) {
        scene_.set_current_time(seconds);
    }
    ~TimeScope() { scene_.set_current_time(before_); }
    TimeScope(const TimeScope&) = delete;
    TimeScope& operator=(const TimeScope&) = delete;

private:
    Scene& scene_;
    double before_;
};

Result<CommandResult> get_attr(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    if (arguments.count() != 1) return Error{"getAttr needs one attribute"};
    const Result<Plug> plug = plug_named(scene, arguments[0]);
    if (!plug) return plug.error();
    const AttributeFlags flags = plug->node->flags(plug->key.attribute);
    if (arguments.has("l")) return integer_result(flags.locked ? 1 : 0);
    if (arguments.has("k")) return integer_result(flags.keyable.value_or(true) ? 1 : 0);
    if (arguments.has("cb")) return integer_result(flags.channel_box.value_or(false) ? 1 : 0);
    if (arguments.has("se")) return integer_result(scene.check_settable(*plug) ? 1 : 0);
    if (arguments.has("typ")) return text_result(shown_type(plug->attribute()));
    if (arguments.has("s")) {
        const auto size = plug->is_array() ? plug->node->existing_indices(plug->key).size() : 1;
        return integer_result(static_cast<std::int64_t>(size));
    }
    if (arguments.has("mi")) {
        CommandResult out;
        out.kind = CommandResult::Kind::integers;
        for (const int index : plug->node->existing_indices(plug->key)) out.integers.push_back(index);
        return out;
    }
    const std::string* time = arguments.text("t");
    if (!time) return value_result(scene, *plug);
    const Result<double> seconds = time_of(*time);
    if (!seconds) return seconds.error();
    const TimeScope scope(scene, *seconds);
    return value_result(scene, *plug);
}

Result<CommandResult> add_attr(Session& session, std::span<const Word> words) {
    const Result<AttributeAddition> addition = parse_attribute_addition(words, ValueUnits::of(session.scene()));
    if (!addition) return addition.error();
    std::vector<std::string> names;
    for (const Word& word : addition->nodes) names.emplace_back(word.text);
    const Result<std::vector<Node*>> nodes = named_or_selected(session, names);
    if (!nodes) return nodes.error();
    for (Node* node : *nodes) {
        if (Result<void> added = add_attribute(*node, *addition); !added) return added.error();
    }
    return CommandResult();
}

Result<CommandResult> attribute_exists(Session& session, const Arguments& arguments) {
    if (arguments.count() != 2) return Error{"attributeExists needs an attribute and a node"};
    const Result<Node*> node = session.scene().find_node(arguments[1]);
    return integer_result(node && (*node)->find_plug(arguments[0]) ? 1 : 0);
}

struct PlugPair {
    Plug source, destination;
};

Result<PlugPair> ends_of(Session& session, const Arguments& arguments) {
    if (arguments.count() != 2) return Error{"A source and a destination are needed"};
    const Result<Plug> source = plug_named(session.scene(), arguments[0]);
    if (!source) return source.error();
    const Result<Plug> destination = plug_named(session.scene(), arguments[1]);
    if (!destination) return destination.error();
    return PlugPair{*source, *destination};
}

Result<CommandResult> connect_attr(Session& session, const Arguments& arguments) {
    const Result<PlugPair> ends = ends_of(session, arguments);
    if (!ends) return ends.error();
    const auto& [source, destination] = *ends;
    if (destination.is_array() && !arguments.has("na"))
        return Error{"'" + destination.name() + "' is a whole array; name an element or give -nextAvailable"};
    const bool whole = source.is_array() && source.attribute().output;
    const Result<void> done =
        session.scene().connect(whole ? source.element(0) : source, destination, arguments.has("f"));
    if (!done) return done.error();
    return text_result("Connected " + source.name() + " to " + destination.name() + ".");
}

Result<CommandResult> disconnect_attr(Session& session, const Arguments& arguments) {
    const Result<PlugPair> ends = ends_of(session, arguments);
    if (!ends) return ends.error();
    const auto& [source, destination] = *ends;
    if (destination.node->source_of(destination.key) != source)
        return Error{"There is no connection from '" + source.name() + "' to '" + destination.name() +
                     "' to disconnect"};
    session.scene().disconnect(destination);
    return text_result("Disconnect " + source.name() + " from " + destination.name() + ".");
}

constexpr const char* set_attr_flags = "k,keyable=b l,lock=b cb,channelBox=b ca,caching=b av,alteredValue c,clamp "
                                       "s,size=i ch,capacityHint=i typ,type=s";
constexpr const char* add_attr_flags =
    "ln,longName=s sn,shortName=s at,attributeType=s dt,dataType=s p,parent=s dv,defaultValue=d en,enumName=s m,multi "
    "k,keyable=b h,hidden=b min,minValue=d max,maxValue=d smn,softMinValue=d smx,softMaxValue=d nc,numberOfChildren=i "
    "nn,niceName=s ct,category=s* s,storable=b r,readable=b w,writable=b ci,cachedInternally=b is,internalSet=b "
    "uac,usedAsColor im,indexMatters=b";

constexpr CommandRow attribute_rows[] = {
    {"setAttr", set_attr_flags, nullptr, set_attr},
    {"getAttr",
     "t,time=s l,lock k,keyable cb,channelBox se,settable typ,type s,size mi,multiIndices sl,silent "
     "x,expandEnvironmentVariables",
     get_attr},
    {"addAttr", add_attr_flags, nullptr, add_attr},
    {"attributeExists", "", attribute_exists},
    {"connectAttr", "f,force na,nextAvailable l,lock=b rd,referenceDest=s", connect_attr},
    {"disconnectAttr", "na,nextAvailable", disconnect_attr},
};

} // namespace

std::span<const CommandRow> attribute_commands() {
    return attribute_rows;
}

} // namespace headless
