#pragma once

#include <maya/MFnData.h>

class MMatrix;

/// A matrix that a plug has.
class MFnMatrixData : public MFnData {
public:
    MFnMatrixData() {}
    MFnMatrixData(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnMatrixData(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kMatrixData; }

    const MMatrix& matrix(MStatus* status = nullptr) const; ///< holds until the next call

private:
    MFnMatrixData(const MFnMatrixData&);
    MFnMatrixData& operator=(const MFnMatrixData&);
    MFnMatrixData* operator&() const;
};
