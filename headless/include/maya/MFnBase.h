#pragma once

#include <maya/MFn.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MObject;

/// The base of the function sets: operations on objects of some kind. On an object of another kind, or one that
/// is gone, every operation fails and changes nothing.
class MFnBase {
public:
    virtual ~MFnBase();
    virtual MFn::Type type() const;
    bool hasObj(MFn::Type kind) const;
    bool hasObj(const MObject& object) const;
    MObject object(MStatus* status = nullptr) const;
    virtual MStatus setObject(MObject& object);
    virtual MStatus setObject(const MObject& object);

protected:
    MFnBase();
    void attach(const MObject& object, MStatus* status);

private:
    MFnBase(const MFnBase&);
    MFnBase& operator=(const MFnBase&);
    MFnBase* operator&() const;

    friend struct headless::Access;
    unsigned int slot_ = 0, serial_ = 0;
};
