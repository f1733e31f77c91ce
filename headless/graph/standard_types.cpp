#include "headless/graph/standard_types.h"

namespace headless {
namespace {

using enum AttributeKind;

void add_output_matrices(NodeType& type, std::initializer_list<std::pair<const char*, const char*>> names, bool array) {
    for (const auto& [long_name, short_name] : names) {
        const AttributeId id = type.add(long_name, short_name, matrix);
        if (array) type.make_array(id);
        type.make_output(id);
    }
}

void add_dag_node(NodeTypes& types) {
    NodeType& node = types.add("node", "", MFn::kDependencyNode);
    node.add("message", "msg", message);
    node.add("caching", "cch", boolean);
    node.add("isHistoricallyInteresting", "ihi", integer, 2);
    node.add("nodeState", "nds", enumeration);

    NodeType& dag = types.add("dagNode", "node", MFn::kDagNode);
    add_output_matrices(dag, {{"matrix", "m"}, {"inverseMatrix", "im"}}, false);
    add_output_matrices(
        dag,
        {{"worldMatrix", "wm"}, {"worldInverseMatrix", "wim"}, {"parentMatrix", "pm"}, {"parentInverseMatrix", "pim"}},
        true);
    dag.add("visibility", "v", boolean, true);
    dag.add("intermediateObject", "io", boolean);
    dag.add("template", "tmp", boolean);
    const AttributeId groups = dag.add("instObjGroups", "iog", compound);
    dag.make_array(groups);
    const AttributeId object_groups = dag.add("objectGroups", "og", compound, {}, groups);
    dag.make_array(object_groups);
    dag.add("objectGrpCompList", "gcl", untyped, {}, object_groups);
    dag.add("objectGroupId", "gid", integer, 0, object_groups);
    dag.add("objectGrpColor", "gco", integer, 0, object_groups);
}

void add_transforms(NodeTypes& types) {
    NodeType& transform = types.add("transform", "dagNode", MFn::kTransform);
    transform.add_vector("translate", "t", distance);
    transform.add_vector("rotate", "r", angle);
    transform.add_vector("scale", "s", number, 1.0);
    const AttributeId shear = transform.add("shear", "sh", compound);
    transform.add("shearXY", "shxy", number, 0.0, shear);
    transform.add("shearXZ", "shxz", number, 0.0, shear);
    transform.add("shearYZ", "shyz", number, 0.0, shear);
    transform.add_vector("rotatePivot", "rp", distance);
    transform.add_vector("rotatePivotTranslate", "rpt", distance);
    transform.add_vector("scalePivot", "sp", distance);
    transform.add_vector("scalePivotTranslate", "spt", distance);
    transform.add_vector("rotateAxis", "ra", angle);
    transform.add("rotateOrder", "ro", enumeration, 0);
    transform.add("inheritsTransform", "it", boolean, true);

    NodeType& joint = types.add("joint", "transform", MFn::kJoint);
    joint.add_vector("jointOrient", "jo", angle);
    joint.add_vector("inverseScale", "is", number, 1.0);
    joint.add("segmentScaleCompensate", "ssc", boolean, true);
    joint.add("bindPose", "bps", matrix);
    joint.add_vector("preferredAngle", "pa", angle);
    joint.add_vector("stiffness", "st", number);
    joint.add("radius", "radi", number, 1.0);
    joint.add("drawStyle", "ds", enumeration);
    joint.add("side", "sd", enumeration);
    joint.add("type", "typ", enumeration);
    joint.add("otherType", "otp", text);
    joint.add("drawLabel", "dl", boolean);

    NodeType& handle = types.add("ikHandle", "transform", MFn::kIkHandle);
    handle.add("startJoint", "hsj", message);
    handle.add("endEffector", "hee", message);
    handle.add("solver", "hsv", message);
    handle.add("ikBlend", "ikb", number, 1.0);
    handle.unevaluated_driver = true;
    types.add("ikEffector", "transform", MFn::kIkEffector).add("handlePath", "hp", message);
    types.add("dagRoot", "dagNode", MFn::kWorld);
    types.add("hikFKJoint", "joint", MFn::kJoint);
    for (const char* name : {"dagContainer", "hikIKEffector", "place3dTexture", "lookAt", "pointEmitter", "airField",
                             "dragField", "gravityField", "newtonField", "radialField", "turbulenceField",
                             "uniformField", "vortexField", "volumeAxisField"})
        types.add(name, "transform", MFn::kTransform);
}

void add_shapes(NodeTypes& types) {
    types.add("shape", "dagNode", MFn::kShape);
    types.add("locator", "shape", MFn::kLocator).add_vector("localScale", "los", number, 1.0);
    types.add("nurbsCurve", "shape", MFn::kNurbsCurve);
    types.add("nurbsSurface", "shape", MFn::kNurbsSurface);
    types.add("lattice", "shape", MFn::kLattice);

    NodeType& camera = types.add("camera", "shape", MFn::kCamera);
    camera.add("renderable", "rnd", boolean, true);
    camera.add("focalLength", "fl", number, 35.0);
    camera.add("centerOfInterest", "coi", distance, 5.0);
    camera.add("nearClipPlane", "ncp", distance, 0.1);
    camera.add("farClipPlane", "fcp", distance, 10000.0);
    camera.add("orthographic", "o", boolean);
    camera.add("orthographicWidth", "ow", distance, 10.0);

    NodeType& light = types.add("light", "shape", MFn::kLight);
    const AttributeId color = light.add("color", "cl", compound);
    light.add("colorR", "cr", number, 1.0, color);
    light.add("colorG", "cg", number, 1.0, color);
    light.add("colorB", "cb", number, 1.0, color);
    light.add("intensity", "in", number, 1.0);
    types.add("ambientLight", "light", MFn::kAmbientLight);
    types.add("nonAmbientLightShapeNode", "light", MFn::kNonAmbientLight);
    types.add("nonExtendedLightShapeNode", "nonAmbientLightShapeNode", MFn::kNonExtendedLight);
    types.add("areaLight", "nonAmbientLightShapeNode", MFn::kAreaLight);
    types.add("directionalLight", "nonExtendedLightShapeNode", MFn::kDirectionalLight);
    types.add("pointLight", "nonExtendedLightShapeNode", MFn::kPointLight);
    types.add("spotLight", "nonExtendedLightShapeNode", MFn::kSpotLight);
    types.add("volumeLight", "pointLight", MFn::kVolumeLight);
}

AttributeId add_colour(NodeType& type, const char* long_name, const char* short_name, double value) {
    const AttributeId id = type.add(long_name, short_name, compound);
    for (const char* suffix : {"Rr", "Gg", "Bb"})
        type.add(std::string(long_name) + suffix[0], std::string(short_name) + suffix[1], number, value, id);
    return id;
}

void add_shading(NodeTypes& types) {
    NodeType& lambert = types.add("lambert", "node", MFn::kLambert);
    add_colour(lambert, "color", "c", 0.5);
    add_colour(lambert, "transparency", "it", 0.0);
    add_colour(lambert, "ambientColor", "ambc", 0.0);
    add_colour(lambert, "incandescence", "ic", 0.0);
    lambert.add("diffuse", "dc", number, 0.8);
    lambert.add("translucence", "tc", number, 0.0);
    lambert.make_output(add_colour(lambert, "outColor", "oc", 0.0));
    types.add("reflect", "lambert", MFn::kReflect);
    types.add("blinn", "reflect", MFn::kBlinn);
    types.add("phong", "reflect", MFn::kPhong);

    NodeType& set = types.add("objectSet", "node", MFn::kSet);
    set.make_array(set.add("dagSetMembers", "dsm", message));
    set.make_array(set.add("dnSetMembers", "dnsm", message));
    set.make_array(set.add("memberWireframeColor", "mwc", integer, -1));
    set.add("partition", "pa", message);
    NodeType& engine = types.add("shadingEngine", "objectSet", MFn::kShadingEngine);
    engine.add("surfaceShader", "ss", untyped);
    NodeType& partition = types.add("partition", "node", MFn::kPartition);
    partition.make_array(partition.add("sets", "st", message));
    types.add("file", "node", MFn::kFileTexture);
    types.add("place2dTexture", "node", MFn::kPlace2dTexture);
    types.add("lightLinker", "node", MFn::kLightLinker);
    types.add("displayLayer", "node", MFn::kDisplayLayer);
    types.add("renderLayer", "node", MFn::kRenderLayer);
    types.add("groupId", "node", MFn::kGroupId);
    types.add("groupParts", "node", MFn::kGroupParts);
    NodeType& skin = types.add("skinCluster", "node", MFn::kSkinClusterFilter);
    const AttributeId weights_of_points = skin.add("weightList", "wl", compound);
    skin.make_array(weights_of_points);
    skin.make_array(skin.add("weights", "w", number, 0.0, weights_of_points));
    types.add("blendShape", "node", MFn::kBlendShape);
    types.add("dagPose", "node", MFn::kDagPose);
    NodeType& script = types.add("script", "node", MFn::kScript);
    script.add("before", "b", text);
    script.add("after", "a", text);
    script.add("scriptType", "st", enumeration);
}

// Types of which every scene holds a node, and whose attributes nothing here reads.
void add_scene_furniture(NodeTypes& types) {
    for (const char* name : {"sequenceManager",
                             "hardwareRenderingGlobals",
                             "renderGlobalsList",
                             "defaultLightList",
                             "defaultShaderList",
                             "postProcessList",
                             "defaultRenderUtilityList",
                             "defaultRenderingList",
                             "lightList",
                             "defaultTextureList",
                             "particleCloud",
                             "materialInfo",
                             "shaderGlow",
                             "dof",
                             "renderGlobals",
                             "renderQuality",
                             "resolution",
                             "viewColorManager",
                             "colorManagementGlobals",
                             "hardwareRenderGlobals",
                             "ikSystem",
                             "hyperGraphInfo",
                             "hyperLayout",
                             "globalCacheControl",
                             "dynController",
                             "strokeGlobals",
                             "displayLayerManager",
                             "renderLayerManager",
                             "nodeGraphEditorInfo",
                             "shapeEditorManager",
                             "poseInterpolatorManager"})
        types.add(name, "node", MFn::kDependencyNode);
}

} // namespace

void add_standard_types(NodeTypes& types) {
    add_dag_node(types);
    add_transforms(types);
    add_shapes(types);
    add_mesh_types(types);
    add_shading(types);
    add_scene_furniture(types);
    add_animation_types(types);
}

} // namespace headless
