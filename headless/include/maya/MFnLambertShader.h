#pragma once

#include <maya/MFnDependencyNode.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

class MColor;

/// Operations on a lambert shader and those derived from it, at the current time. Colours have an opacity of 1.
class MFnLambertShader : public MFnDependencyNode {
public:
    MFnLambertShader() {}
    MFnLambertShader(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnLambertShader(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kLambert; }

    MColor color(MStatus* status = nullptr) const;
    MColor transparency(MStatus* status = nullptr) const;
    MColor ambientColor(MStatus* status = nullptr) const;
    MColor incandescence(MStatus* status = nullptr) const;
    float diffuseCoeff(MStatus* status = nullptr) const;
    float translucenceCoeff(MStatus* status = nullptr) const;

private:
    MFnLambertShader(const MFnLambertShader&);
    MFnLambertShader& operator=(const MFnLambertShader&);
    MFnLambertShader* operator&() const;
};
