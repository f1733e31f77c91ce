#pragma once

#include <maya/MFn.h>
#include <maya/MTypes.h>

#include <stdio.h>

/// A small handle to something in the host, as a rule a node. It keeps nothing alive: once the node is gone the
/// handle is null in every answer, and it never comes to mean another node.
class MObject {
public:
    MObject() = default;

    bool hasFn(MFn::Type type) const;
    MFn::Type apiType() const;
    const char* apiTypeStr() const;
    bool isNull() const;
    bool operator==(const MObject& other) const { return slot_ == other.slot_ && serial_ == other.serial_; }
    bool operator!=(const MObject& other) const { return !(*this == other); }

    static MObject kNullObj;

private:
    friend struct headless::Access;
    unsigned int slot_ = 0, serial_ = 0;
};
