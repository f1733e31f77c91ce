#pragma once

#include <maya/MFnData.h>

/// Components of shapes that a plug names, each entry one run of them.
class MFnComponentListData : public MFnData {
public:
    MFnComponentListData() {}
    MFnComponentListData(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnComponentListData(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFn::Type type() const override { return MFn::kComponentListData; }

    unsigned int length(MStatus* status = nullptr) const;
    MObject operator[](unsigned int index) const;

private:
    MFnComponentListData(const MFnComponentListData&);
    MFnComponentListData& operator=(const MFnComponentListData&);
    MFnComponentListData* operator&() const;
};
