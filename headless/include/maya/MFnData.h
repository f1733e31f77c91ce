#pragma once

#include <maya/MFnBase.h>

/// Operations on data that a plug holds or works out, as `MPlug::asMObject` gives it. Such an object stands for what
/// the plug has when it is asked, and for nothing once some thousands of further ones were given.
class MFnData : public MFnBase {
public:
    MFnData() {}
    MFnData(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnData(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kData; }

private:
    MFnData(const MFnData&);
    MFnData& operator=(const MFnData&);
    MFnData* operator&() const;
};
