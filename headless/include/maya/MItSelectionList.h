#pragma once

#include <maya/MSelectionList.h>

/// Walks the entries of a selection list, as it was when the walk began, that have a kind.
class MItSelectionList {
public:
    enum selectionItemType {
        kUnknownItem = -1,
        kDagSelectionItem,
        kAnimSelectionItem,
        kDNselectionItem,
        kPlugSelectionItem
    };

    MItSelectionList(const MSelectionList& list, MFn::Type filter = MFn::kInvalid, MStatus* status = nullptr);
    bool isDone(MStatus* status = nullptr) const;
    MStatus next();
    MStatus reset();
    MStatus setFilter(MFn::Type filter);
    selectionItemType itemType(MStatus* status = nullptr) const;
    MStatus getDependNode(MObject& node) const;
    MStatus getDagPath(MDagPath& path) const;
    MStatus getDagPath(MDagPath& path, MObject& component) const;
    MStatus getPlug(MPlug& plug);
    MStatus getStrings(MStringArray& names) const;

private:
    void skip_others();

    MSelectionList list_;
    MFn::Type filter_;
    unsigned int at_ = 0;
};
