#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/detail/held.h>

class MDagPath;
class MPlug;
class MString;
class MStringArray;
namespace headless {
class SelectionList;
}

/// Nodes, ways to nodes and plugs in the order in which they came, each once.
class MSelectionList {
public:
    enum MergeStrategy { kMergeNormal = 0, kXORWithList, kRemoveFromList };

    unsigned int length(MStatus* status = nullptr) const;
    bool isEmpty(MStatus* status = nullptr) const { return length(status) == 0; }
    MStatus clear();
    /// By name or path, with wildcards. `searchChildNamespaces` finds it in every namespace too.
    MStatus add(const MString& name, const bool searchChildNamespaces = false);
    MStatus add(const MObject& node, const bool mergeWithExisting = false);
    MStatus add(const MDagPath& path, const MObject& component = MObject::kNullObj,
                const bool mergeWithExisting = false);
    MStatus add(const MPlug& plug, const bool mergeWithExisting = false);
    MStatus remove(unsigned int i);
    /// Appends what isn't there yet, in the other's order; what is there keeps its place. The other two
    /// strategies drop what both hold (and append the rest), or drop what the other holds.
    MStatus merge(const MSelectionList& other, const MergeStrategy strategy = kMergeNormal);

    MStatus getDependNode(unsigned int i, MObject& node) const;
    MStatus getDagPath(unsigned int i, MDagPath& path, MObject& component = MObject::kNullObj) const;
    MStatus getPlug(unsigned int i, MPlug& plug) const;
    MStatus getSelectionStrings(MStringArray& names) const;
    MStatus getSelectionStrings(unsigned int i, MStringArray& names) const;
    bool hasItem(const MObject& node, MStatus* status = nullptr) const;
    bool hasItem(const MDagPath& path, const MObject& component = MObject::kNullObj, MStatus* status = nullptr) const;

private:
    friend struct headless::Access;
    headless::Held<headless::SelectionList> list_;
};
