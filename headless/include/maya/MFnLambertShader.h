#pragma once

#include <maya/MColor.h>
#include <maya/MFnDependencyNode.h>

/// Operations on a lambert shader and those derived from it, at the current time. Colours have an opacity of 1.
class MFnLambertShader : public MFnDependencyNode {
public:
    MFnLambertShader() = default;
    MFnLambertShader(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnLambertShader(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kLambert; }

    MColor color(MStatus* status = nullptr) const;
    MColor transparency(MStatus* status = nullptr) const;
    MColor ambientColor(MStatus* status = nullptr) const;
    MColor incandescence(MStatus* status = nullptr) const;
    float diffuseCoeff(MStatus* status = nullptr) const;
    float translucenceCoeff(MStatus* status = nullptr) const;
};
