// The names of the kinds of objects.
#include <maya/MObject.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace {

using enum MFn::Type;

// The kinds by number and, parted by ", ", by name.
#define VOR2_KINDS(...)                                                                                                \
    constexpr MFn::Type kinds[] = {__VA_ARGS__};                                                                       \
    constexpr const char* kind_names = #__VA_ARGS__;
VOR2_KINDS(kInvalid, kBase, kNamedObject, kModel, kDependencyNode, kAddDoubleLinear, kAffect, kAnimCurve,
           kAnimCurveTimeToAngular, kAnimCurveTimeToDistance, kAnimCurveTimeToTime, kAnimCurveTimeToUnitless,
           kAnimCurveUnitlessToAngular, kAnimCurveUnitlessToDistance, kAnimCurveUnitlessToTime,
           kAnimCurveUnitlessToUnitless, kBlend, kBlinn, kCharacter, kChoice, kDagNode, kUnderWorld, kTransform,
           kAimConstraint, kLookAt, kGeometryConstraint, kIkEffector, kIkHandle, kJoint, kConstraint, kNormalConstraint,
           kOrientConstraint, kPointConstraint, kSymmetryConstraint, kParentConstraint, kPoleVectorConstraint,
           kScaleConstraint, kTangentConstraint, kUnknown, kWorld, kShape, kCamera, kCluster, kCurve, kNurbsCurve,
           kNurbsSurface, kMesh, kLattice, kLocator, kLight, kAmbientLight, kNonAmbientLight, kAreaLight, kLinearLight,
           kNonExtendedLight, kDirectionalLight, kPointLight, kSpotLight, kVolumeLight, kSkinClusterFilter, kBlendShape,
           kDisplayLayer, kExpression, kFileTexture, kGroupId, kGroupParts, kLightLink, kPairBlend, kLambert, kReflect,
           kPhong, kPartition, kPlace2dTexture, kRenderLayer, kScript, kSet, kShadingEngine, kTime, kUnitConversion,
           kUnitToTimeConversion, kDagPose, kClip, kClipScheduler, kClipLibrary, kCharacterMap, kAttribute, kPlugin,
           kGeometryFilt, kWeightGeometryFilt, kClusterFilter, kTweak, kBump, kMeshData, kMatrixData, kPointArrayData,
           kComponentListData, kMeshVertComponent, kMultDoubleLinear, kMultiplyDivide, kPlusMinusAverage, kReverse,
           kCondition, kPolyCreator, kMidModifier)

std::vector<std::string> split_names() {
    std::vector<std::string> out;
    std::istringstream text(kind_names);
    for (std::string name; std::getline(text >> std::ws, name, ',');) out.push_back(name);
    return out;
}

} // namespace

const char* MObject::apiTypeStr() const {
    static const std::vector<std::string> names = split_names();
    const auto at = std::ranges::find(kinds, apiType()) - std::begin(kinds);
    return at < std::ssize(names) ? names[static_cast<std::size_t>(at)].c_str() : "kInvalid";
}
