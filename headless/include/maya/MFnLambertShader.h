#pragma once

#include <maya/MColor.h>
#include <maya/MFnDependencyNode.h>

/// Operations on a lambert shader and those derived from it, at the current time. Colours have an opacity of 1.
class MFnLambertShader : public MFnDependencyNode {
public:
    MFnLambertShader() = default;
    MFnLambertShader(MObject& object, MStatus* status = NULL) { attach(object, status); }
    MFnLambertShader(const MObject& object, MStatus* status = NULL) { attach(object, status); }
    MFn::Type type() const override { return MFn::kLambert; }

    MColor color(MStatus* status = NULL) const;
    MColor transparency(MStatus* status = NULL) const;
    MColor ambientColor(MStatus* status = NULL) const;
    MColor incandescence(MStatus* status = NULL) const;
    float diffuseCoeff(MStatus* status = NULL) const;
    float translucenceCoeff(MStatus* status = NULL) const;
};
