// MPlug.
#include "headless/api/access.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MIntArray.h>
#include <maya/MPlugArray.h>
#include <maya/MTime.h>

#include <algorithm>

using namespace headless;

Plug Access::plug(const MPlug& plug) {
    Node* found = node(plug.node_);
    if (!found || plug.attribute_ >= found->attribute_count()) return {};
    PlugKey key{plug.attribute_, static_cast<std::uint8_t>(plug.depth_), {}};
    std::copy_n(plug.index_, key.index.size(), key.index.begin());
    return {found, key};
}

MPlug Access::plug(const Plug& plug) {
    MPlug out;
    if (!plug) return out;
    out.node_ = object(plug.node);
    out.attribute_ = plug.key.attribute;
    out.depth_ = plug.key.depth;
    std::copy(plug.key.index.begin(), plug.key.index.end(), out.index_);
    return out;
}

namespace {

// Answers a question about a plug; one that is gone gives the type's nothing and a failure.
template<typename Question>
auto ask(const MPlug& plug, MStatus* status, Question question) {
    const Plug found = Access::plug(plug);
    using Answer = decltype(question(found));
    return found ? succeed(status, question(found)) : fail(status, Answer());
}

MPlug part(const Plug& plug, MStatus* status) {
    return plug ? succeed(status, Access::plug(plug)) : fail(status, MPlug());
}

MStatus set(const MPlug& plug, const Value& value) {
    const Plug found = Access::plug(plug);
    if (!found) return MStatus::kFailure;
    if (const Result<void> done = Access::scene().set(found, value); !done) {
        Session::current().error(done.error().message);
        return MStatus::kFailure;
    }
    return MStatus::kSuccess;
}

Value value_of(const Plug& plug) {
    return Access::scene().evaluate(plug);
}

} // namespace

bool MPlug::isNull(MStatus* status) const {
    put(status, MStatus::kSuccess);
    return !Access::plug(*this);
}

MString MPlug::name(MStatus* status) const {
    return ask(*this, status,
               [](const Plug& plug) { return text(Access::scene().unique_name_of(*plug.node) + plug.path()); });
}

MString MPlug::info(MStatus* status) const {
    return name(status);
}

namespace {

// The name that a user gave a plug; the node keeps these as pairs of texts, each behind its plug's name.
std::string alias_of(const Plug& plug) {
    const Plug list = plug.node->find_plug("attributeAliasList");
    const Value value = list ? plug.node->get(list.key) : Value();
    const auto* raw = value.get_if<RawTokens>();
    if (!raw) return {};
    std::vector<std::string> names;
    for (const std::string& token : raw->tokens) {
        // Between braces, with commas, as files have them.
        for (std::size_t at = 0; (at = token.find('"', at)) != std::string::npos;) {
            const std::size_t end = token.find('"', at + 1);
            if (end == std::string::npos) break;
            names.push_back(token.substr(at + 1, end - at - 1));
            at = end + 1;
        }
    }
    for (std::size_t i = 1; i < names.size(); i += 2) {
        if ("." + names[i] == plug.path()) return names[i - 1];
    }
    return {};
}

} // namespace

MString MPlug::partialName(bool with_node, bool, bool, bool use_alias, bool full_path, bool long_names,
                           MStatus* status) const {
    return ask(*this, status, [=](const Plug& plug) {
        std::string path = use_alias ? alias_of(plug) : std::string();
        if (!path.empty()) return text(with_node ? Access::scene().unique_name_of(*plug.node) + "." + path : path);
        path = plug.path(!long_names).substr(1);
        if (!full_path && plug.attribute().array_levels == 0) path = path.substr(path.rfind('.') + 1);
        return text(with_node ? Access::scene().unique_name_of(*plug.node) + "." + path : path);
    });
}

MObject MPlug::node(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) { return Access::object(plug.node); });
}

bool MPlug::isArray(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) { return plug.is_array(); });
}

bool MPlug::isElement(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) { return plug.attribute().array && !plug.is_array(); });
}

bool MPlug::isCompound(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) { return plug.is_compound(); });
}

bool MPlug::isChild(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) { return plug.attribute().parent != no_attribute; });
}

bool MPlug::isDynamic(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) { return plug.attribute().dynamic; });
}

unsigned int MPlug::numElements(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) {
        return plug.is_array() ? static_cast<unsigned int>(plug.node->existing_indices(plug.key).size()) : 0u;
    });
}

unsigned int MPlug::getExistingArrayAttributeIndices(MIntArray& indices, MStatus* status) {
    indices.clear();
    const Plug plug = Access::plug(*this);
    if (!plug || !plug.is_array()) return fail(status, 0u);
    const std::vector<int> found = plug.node->existing_indices(plug.key);
    indices = MIntArray(found.data(), static_cast<unsigned int>(found.size()));
    return succeed(status, indices.length());
}

unsigned int MPlug::numChildren(MStatus* status) const {
    return ask(*this, status,
               [](const Plug& plug) { return static_cast<unsigned int>(plug.attribute().children.size()); });
}

unsigned int MPlug::logicalIndex(MStatus* status) const {
    if (!isElement(status)) return fail(status, 0u, MStatus::kInvalidParameter);
    return static_cast<unsigned int>(index_[depth_ - 1]);
}

MPlug MPlug::elementByLogicalIndex(unsigned int i, MStatus* status) const {
    const Plug plug = Access::plug(*this);
    const bool good = plug && plug.is_array() && i <= static_cast<unsigned int>(last_index);
    return part(good ? plug.element(static_cast<int>(i)) : Plug(), status);
}

MPlug MPlug::elementByPhysicalIndex(unsigned int i, MStatus* status) const {
    const Plug plug = Access::plug(*this);
    if (!plug || !plug.is_array()) return part({}, status);
    const std::vector<int> indices = plug.node->existing_indices(plug.key);
    return part(i < indices.size() ? plug.element(indices[i]) : Plug(), status);
}

MPlug MPlug::child(unsigned int i, MStatus* status) const {
    const Plug plug = Access::plug(*this);
    const bool good = plug && !plug.is_array() && i < plug.attribute().children.size();
    return part(good ? plug.child(static_cast<int>(i)) : Plug(), status);
}

MPlug MPlug::parent(MStatus* status) const {
    const Plug plug = Access::plug(*this);
    return part(plug ? plug.parent() : Plug(), status);
}

MPlug MPlug::array(MStatus* status) const {
    Plug plug = Access::plug(*this);
    if (!plug || !plug.attribute().array || plug.is_array()) return part({}, status);
    plug.key.index[--plug.key.depth] = 0;
    return part(plug, status);
}

bool MPlug::isConnected(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) {
        return static_cast<bool>(plug.node->source_of(plug.key)) || plug.node->outputs().contains(plug.key);
    });
}

bool MPlug::connectedTo(MPlugArray& plugs, bool asDestination, bool asSource, MStatus* status) const {
    plugs.clear();
    const Plug plug = Access::plug(*this);
    if (!plug) return fail(status, false);
    const Plug source = plug.node->source_of(plug.key);
    if (asDestination && source) plugs.append(Access::plug(source));
    if (asSource) {
        const auto [first, last] = plug.node->outputs().equal_range(plug.key);
        for (auto at = first; at != last; ++at) plugs.append(Access::plug(at->second));
    }
    return succeed(status, plugs.length() > 0);
}

bool MPlug::isLocked(MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) { return plug.is_locked(); });
}

MStatus MPlug::setLocked(bool locked) {
    const Plug plug = Access::plug(*this);
    if (!plug) return MStatus::kFailure;
    AttributeFlags flags = plug.node->flags(plug.key.attribute);
    flags.locked = locked;
    plug.node->set_flags(plug.key.attribute, flags);
    return MStatus::kSuccess;
}

bool MPlug::isKeyable(MStatus* status) const {
    return ask(*this, status,
               [](const Plug& plug) { return plug.node->flags(plug.key.attribute).keyable.value_or(true); });
}

MStatus MPlug::setKeyable(bool keyable) {
    const Plug plug = Access::plug(*this);
    if (!plug) return MStatus::kFailure;
    AttributeFlags flags = plug.node->flags(plug.key.attribute);
    flags.keyable = keyable;
    plug.node->set_flags(plug.key.attribute, flags);
    return MStatus::kSuccess;
}

MStatus MPlug::setValue(double value) {
    const Plug plug = Access::plug(*this);
    const bool time = plug && plug.attribute().kind == AttributeKind::time;
    return set(*this, time ? Access::scene().time_unit.to_seconds(value) : value);
}
MStatus MPlug::setValue(float value) {
    return setValue(static_cast<double>(value));
}
MStatus MPlug::setValue(int value) {
    return setValue(static_cast<double>(value));
}
MStatus MPlug::setValue(short value) {
    return setValue(static_cast<double>(value));
}
MStatus MPlug::setValue(bool value) {
    return set(*this, value);
}
MStatus MPlug::setValue(MTime& value) {
    return set(*this, value.as(MTime::kSeconds));
}
MStatus MPlug::setValue(MAngle& value) {
    return set(*this, value.asRadians());
}
MStatus MPlug::setValue(MDistance& value) {
    return set(*this, value.asCentimeters());
}
MStatus MPlug::setValue(const MString& value) {
    return set(*this, Access::text(value));
}
MStatus MPlug::setValue(const char* value) {
    return setValue(MString(value));
}

double MPlug::asDouble(MDGContext&, MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) {
        const double value = value_of(plug).number();
        const bool time = plug.attribute().kind == AttributeKind::time;
        return time ? Access::scene().time_unit.from_seconds(value) : value;
    });
}
float MPlug::asFloat(MDGContext& context, MStatus* status) const {
    return static_cast<float>(asDouble(context, status));
}
int MPlug::asInt(MDGContext& context, MStatus* status) const {
    const std::int64_t value = Value(asDouble(context, status)).integer();
    return static_cast<int>(std::clamp<std::int64_t>(value, -0x80000000LL, 0x7fffffffLL));
}
short MPlug::asShort(MDGContext& context, MStatus* status) const {
    return static_cast<short>(std::clamp(asInt(context, status), -0x8000, 0x7fff));
}
bool MPlug::asBool(MDGContext& context, MStatus* status) const {
    return asDouble(context, status) != 0.0;
}

MTime MPlug::asMTime(MDGContext&, MStatus* status) const {
    const double seconds = ask(*this, status, [](const Plug& plug) { return value_of(plug).number(); });
    const MTime::Unit unit = MTime::uiUnit();
    return MTime(MTime(seconds, MTime::kSeconds).as(unit), unit);
}

MAngle MPlug::asMAngle(MDGContext& context, MStatus* status) const {
    return MAngle(asDouble(context, status), MAngle::kRadians);
}
MDistance MPlug::asMDistance(MDGContext& context, MStatus* status) const {
    return MDistance(asDouble(context, status), MDistance::kCentimeters);
}

MObject MPlug::asMObject(MDGContext&, MStatus* status) const {
    const MObject found = Access::data_of(Access::plug(*this));
    put(status, found.isNull() ? MStatus::kFailure : MStatus::kSuccess);
    return found;
}
MString MPlug::asString(MDGContext&, MStatus* status) const {
    return ask(*this, status, [](const Plug& plug) { return text(value_of(plug).text()); });
}

MStatus MPlug::getValue(bool& value, MDGContext& context) const {
    MStatus status;
    value = asBool(context, &status);
    return status;
}
MStatus MPlug::getValue(int& value, MDGContext& context) const {
    MStatus status;
    value = asInt(context, &status);
    return status;
}
MStatus MPlug::getValue(float& value, MDGContext& context) const {
    MStatus status;
    value = asFloat(context, &status);
    return status;
}
MStatus MPlug::getValue(double& value, MDGContext& context) const {
    MStatus status;
    value = asDouble(context, &status);
    return status;
}
MStatus MPlug::getValue(MTime& value, MDGContext& context) const {
    MStatus status;
    value = asMTime(context, &status);
    return status;
}
MStatus MPlug::getValue(MString& value, MDGContext& context) const {
    MStatus status;
    value = asString(context, &status);
    return status;
}

bool MPlug::operator==(const MPlug& other) const {
    return node_ == other.node_ && attribute_ == other.attribute_ && depth_ == other.depth_ &&
           std::equal(index_, index_ + 4, other.index_);
}
