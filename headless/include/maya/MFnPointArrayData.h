#pragma once

#include <maya/MFnData.h>

class MPointArray;

/// A list of points that a plug has.
class MFnPointArrayData : public MFnData {
public:
    MFnPointArrayData() {}
    MFnPointArrayData(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnPointArrayData(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kPointArrayData; }

    unsigned int length(MStatus* status = nullptr) const;
    MStatus copyTo(MPointArray& array) const;

private:
    MFnPointArrayData(const MFnPointArrayData&);
    MFnPointArrayData& operator=(const MFnPointArrayData&);
    MFnPointArrayData* operator&() const;
};
