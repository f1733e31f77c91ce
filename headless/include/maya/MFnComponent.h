#pragma once

#include <maya/MFnBase.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

/// Parts of a shape.
class MFnComponent : public MFnBase {
public:
    MFnComponent() {}
    MFnComponent(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnComponent(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kComponent; }

    int elementCount(MStatus* status = nullptr) const;
    bool isComplete(MStatus* status = nullptr) const; ///< whether it means all there are, and so names none

private:
    MFnComponent(const MFnComponent&);
    MFnComponent& operator=(const MFnComponent&);
    MFnComponent* operator&() const;
};
