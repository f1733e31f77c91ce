#include "headless/graph/scene.h"

#include "headless/graph/transform_state.h"
#include "headless/graph/unique_names.h"

#include <cmath>
#include <numbers>

namespace headless {
namespace {

std::uint32_t next_serial() {
    static std::uint32_t last = 0;
    return ++last;
}

} // namespace

Scene::Scene() {
    NodeTypes& types = NodeTypes::all();
    world_ = &make(*types.find("dagRoot"));
    world_->name_ = "world";
    --alive_;
    add_default_nodes();
    modified = false;
}

Scene::~Scene() = default;

Node& Scene::make(const NodeType& type) {
    std::uint32_t slot = static_cast<std::uint32_t>(slots_.size());
    slots_.push_back(std::make_unique<Node>(*this, type, NodeHandle{slot, next_serial()}));
    ++alive_;
    if (type.turner) turners_.push_back(slots_.back().get());
    touch();
    modified = true;
    return *slots_.back();
}

Node* Scene::find(NodeHandle handle) const {
    if (!handle || handle.slot >= slots_.size()) return nullptr;
    Node* node = slots_[handle.slot].get();
    return node && node->handle_ == handle ? node : nullptr;
}

std::vector<Node*> Scene::nodes() const {
    std::vector<Node*> out;
    out.reserve(alive_);
    for (const auto& node : slots_) {
        if (node && node.get() != world_) out.push_back(node.get());
    }
    return out;
}

Result<Node*> Scene::create_node(std::string_view type_name, std::string_view wanted, Node* parent) {
    if (type_name.empty()) return Error{"A node needs a type"};
    if (type_name.find(':') != type_name.npos || legal_name(type_name) != type_name)
        return Error{"'" + std::string(type_name) + "' can't be the name of a type"};
    const NodeType& type = NodeTypes::all().find_or_add_unknown(type_name, parent != nullptr);
    if (type.api_type() == MFn::kWorld) return Error{"There is one world and no more is made"};
    std::string name = legal_name(wanted);
    if (name.empty() && !wanted.empty()) return Error{"New name has no legal characters"};
    if (!type.is_dag()) {
        Node& node = make(type);
        node.name_ = names_.unique_name(name.empty() ? std::string(type_name) + "1" : name, {}, nullptr);
        names_.add(node);
        note_namespaces(node.name_);
        return &node;
    }
    if (!parent && type.is_shape()) {
        auto transform = create_node("transform", name.empty() ? std::string(type_name) + "1" : name);
        if (!transform) return transform;
        parent = *transform;
        name = with_shape_suffix(parent->name());
    }
    if (!parent) parent = world_;
    Node& node = make(type);
    if (Result<void> allowed = add_new(node, *parent); !allowed) {
        std::erase(turners_, &node);
        slots_.pop_back();
        --alive_;
        return allowed.error();
    }
    Node* const parents[] = {parent};
    if (name.empty()) name = names_.unique_name(std::string(type_name) + "1", {}, nullptr);
    node.name_ = names_.unique_name(name, parents, nullptr);
    names_.add(node);
    note_namespaces(node.name_);
    attach(node, *parent, -1);
    return &node;
}

// "arm1" has the shape "armShape1".
std::string Scene::with_shape_suffix(std::string_view transform_name) {
    std::size_t end = transform_name.size();
    while (end > 0 && transform_name[end - 1] >= '0' && transform_name[end - 1] <= '9') --end;
    return std::string(transform_name.substr(0, end)) + "Shape" + std::string(transform_name.substr(end));
}

void Scene::remove_node(Node& node) {
    if (&node == world_ || &node == time_node_) return;
    // The whole of what hangs under it alone, parents first; nodes with a parent elsewhere only lose one.
    std::vector<Node*> going{&node};
    while (!node.parents_.empty()) detach(node, *node.parents_.back());
    for (std::size_t i = 0; i < going.size(); ++i) {
        while (!going[i]->children_.empty()) {
            Node& child = *going[i]->children_.back();
            detach(child, *going[i]);
            if (child.parents_.empty()) going.push_back(&child);
        }
    }
    std::vector<NodeHandle> curves;
    for (Node* gone : going) {
        for (const auto& [destination, source] : gone->inputs_) {
            if (source.node->type().derives_from("animCurve")) curves.push_back(source.node->handle());
        }
        drop_connections(*gone);
    }
    for (Node* gone : going) destroy(*gone);
    // A curve that drives nothing any more goes with what it drove.
    for (const NodeHandle handle : curves) {
        Node* curve = find(handle);
        if (curve && curve->outputs_.empty()) remove_node(*curve);
    }
}

void Scene::destroy(Node& node) {
    selection.remove_node(node.handle_);
    names_.remove(node);
    --alive_;
    if (node.type().turner) {
        std::erase(turners_, &node);
        ++turner_edits_;
    }
    touch();
    modified = true;
    slots_[node.handle_.slot].reset();
}

void Scene::drop_connections(Node& node) {
    while (!node.inputs_.empty()) disconnect({&node, node.inputs_.begin()->first});
    while (!node.outputs_.empty()) disconnect(node.outputs_.begin()->second);
}

void Scene::set_current_time(double seconds) {
    if (!std::isfinite(seconds)) return;
    time_ = seconds;
    ++clock_moves_;
    touch();
}

std::vector<std::string> Scene::take_evaluation_errors() {
    return std::exchange(evaluation_errors_, {});
}

void Scene::report_evaluation_error(const std::string& message) {
    if (reported_.insert(message).second) evaluation_errors_.push_back(message);
}

void Scene::forget_evaluation_errors() {
    evaluation_errors_.clear();
    reported_.clear();
}

void Scene::add_default_nodes() {
    static constexpr std::pair<const char*, const char*> table[] = {
        {"time", "time1"},
        {"sequenceManager", "sequenceManager1"},
        {"hardwareRenderingGlobals", "hardwareRenderingGlobals"},
        {"partition", "renderPartition"},
        {"renderGlobalsList", "renderGlobalsList1"},
        {"defaultLightList", "defaultLightList1"},
        {"defaultShaderList", "defaultShaderList1"},
        {"postProcessList", "postProcessList1"},
        {"defaultRenderUtilityList", "defaultRenderUtilityList1"},
        {"defaultRenderingList", "defaultRenderingList1"},
        {"lightList", "lightList1"},
        {"defaultTextureList", "defaultTextureList1"},
        {"lambert", "lambert1"},
        {"particleCloud", "particleCloud1"},
        {"shadingEngine", "initialShadingGroup"},
        {"shadingEngine", "initialParticleSE"},
        {"materialInfo", "initialMaterialInfo"},
        {"shaderGlow", "shaderGlow1"},
        {"dof", "dof1"},
        {"renderGlobals", "defaultRenderGlobals"},
        {"renderQuality", "defaultRenderQuality"},
        {"resolution", "defaultResolution"},
        {"objectSet", "defaultLightSet"},
        {"objectSet", "defaultObjectSet"},
        {"viewColorManager", "defaultViewColorManager"},
        {"colorManagementGlobals", "defaultColorMgtGlobals"},
        {"hardwareRenderGlobals", "hardwareRenderGlobals"},
        {"partition", "characterPartition"},
        {"ikSystem", "ikSystem"},
        {"hyperGraphInfo", "hyperGraphInfo"},
        {"hyperLayout", "hyperGraphLayout"},
        {"globalCacheControl", "globalCacheControl"},
        {"dynController", "dynController1"},
        {"strokeGlobals", "strokeGlobals"}};
    for (const auto& [type, name] : table) (*create_node(type, name))->default_ = true;
    time_node_ = *find_node("time1");
    add_default_cameras();
    for (const auto& [type, name] : {std::pair{"lightLinker", "lightLinker1"},
                                     {"displayLayerManager", "layerManager"},
                                     {"displayLayer", "defaultLayer"},
                                     {"renderLayerManager", "renderLayerManager"},
                                     {"renderLayer", "defaultRenderLayer"}})
        (*create_node(type, name))->default_ = true;
    const auto link = [this](const char* from, const char* to) {
        const Plug source = *find_plug(from), destination = *find_plug(to);
        (void)connect(source, destination);
    };
    link("lambert1.outColor", "initialShadingGroup.surfaceShader");
    link("lambert1.outColor", "initialParticleSE.surfaceShader");
}

void Scene::add_default_cameras() {
    struct View {
        const char* name;
        Vector3 at, turned; // centimetres, degrees
        bool flat;
    };
    static constexpr View views[] = {{"persp", {28, 21, 28}, {-27.938352729602379, 45, 0}, false},
                                     {"top", {0, 100.1, 0}, {-90, 0, 0}, true},
                                     {"front", {0, 0, 100.1}, {0, 0, 0}, true},
                                     {"side", {100.1, 0, 0}, {0, 90, 0}, true}};
    for (const View& view : views) {
        Node& transform = **create_node("transform", view.name);
        Node& camera = **create_node("camera", std::string(view.name) + "Shape", &transform);
        transform.default_ = camera.default_ = true;
        const TransformAttributes& ids = TransformAttributes::ids();
        transform.set({transform.find_attribute("visibility"), 0, {}}, false);
        transform.set({ids.translate, 0, {}}, view.at);
        transform.set({ids.rotate, 0, {}}, view.turned * (std::numbers::pi / 180.0));
        camera.set(camera.find_plug("renderable").key, !view.flat);
        camera.set(camera.find_plug("orthographic").key, view.flat);
        camera.set(camera.find_plug("orthographicWidth").key, 30.0);
        camera.set(camera.find_plug("centerOfInterest").key, view.flat ? 100.1 : 44.82186966202994);
    }
}

} // namespace headless
