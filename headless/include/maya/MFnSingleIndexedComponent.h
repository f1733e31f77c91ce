#pragma once

#include <maya/MFnBase.h>
#include <maya/MFnComponent.h>
#include <maya/MString.h>

class MIntArray;

/// Vertices and other parts that one index names.
class MFnSingleIndexedComponent : public MFnComponent {
public:
    MFnSingleIndexedComponent() {}
    MFnSingleIndexedComponent(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnSingleIndexedComponent(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kSingleIndexedComponent; }

    MStatus getElements(MIntArray& elements) const;

private:
    MFnSingleIndexedComponent(const MFnSingleIndexedComponent&);
    MFnSingleIndexedComponent& operator=(const MFnSingleIndexedComponent&);
    MFnSingleIndexedComponent* operator&() const;
};
