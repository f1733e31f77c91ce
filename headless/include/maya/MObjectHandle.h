#pragma once

#include <maya/MObject.h>

/// A handle that can be asked whether its object is still there, and that has a number for lookups.
class MObjectHandle {
public:
    MObjectHandle() = default;
    MObjectHandle(const MObject& object) : object_(object) {}
    MObject object() const { return object_; }
    bool isValid() const { return !object_.isNull(); }
    bool isAlive() const { return isValid(); }
    /// The same for the same object; different objects may share one.
    unsigned int hashCode() const;
    bool operator==(const MObjectHandle& other) const { return object_ == other.object_; }
    bool operator!=(const MObjectHandle& other) const { return !(*this == other); }

private:
    MObject object_;
};
