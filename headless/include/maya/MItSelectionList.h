#pragma once

#include <maya/MObject.h>
#include <maya/MSelectionList.h>
#include <maya/MStatus.h>
#include <maya/MStringArray.h>

class MDagPath;

/// Walks the entries of a selection list, as it was when the walk began, that have a kind.
class MItSelectionList {
public:
    enum selItemType { kUnknownItem = -1, kDagSelectionItem, kAnimSelectionItem, kDNselectionItem, kPlugSelectionItem };

    MItSelectionList(const MSelectionList& list, MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);
    bool isDone(MStatus* status = nullptr);
    MStatus next();
    MStatus reset();
    MStatus setFilter(MFn::Type filter);
    selItemType itemType(MStatus* status = nullptr);
    MStatus getDependNode(MObject& node);
    MStatus getDagPath(MDagPath& path);
    MStatus getDagPath(MDagPath& path, MObject& component);
    MStatus getPlug(MPlug& plug);
    MStatus getStrings(MStringArray& names);

private:
    void skip_others();

    MSelectionList list_;
    MFn::Type filter_;
    unsigned int at_ = 0;
};
