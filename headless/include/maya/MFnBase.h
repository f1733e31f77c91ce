#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>

/// The base of the function sets: operations on objects of some kind. On an object of another kind, or one that
/// is gone, every operation fails and changes nothing.
class MFnBase {
public:
    virtual ~MFnBase() = default;
    virtual MFn::Type type() const { return MFn::kBase; }
    bool hasObj(MFn::Type kind) const { return kind == type(); }
    bool hasObj(const MObject& object) const { return object.hasFn(type()); }
    MObject object(MStatus* status = nullptr) const;
    virtual MStatus setObject(MObject& object);
    virtual MStatus setObject(const MObject& object);

protected:
    void attach(const MObject& object, MStatus* status);
    MObject object_;
};
