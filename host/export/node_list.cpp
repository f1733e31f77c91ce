#include "host/export/node_list.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MItSelectionList.h>
#include <maya/MStringArray.h>

#include <limits>
#include <string>

namespace VOR2_EXPORTER_MAYA {
namespace {

bool qualifies(const MObject& node) {
    if (!node.hasFn(MFn::kJoint) && !node.hasFn(MFn::kTransform)) return false;
    const MFn::Type type = node.apiType();
    return type != MFn::kOrientConstraint && type != MFn::kParentConstraint && type != MFn::kPointConstraint;
}

bool is_ancestor(const std::string& path, const std::string& descendant) {
    return descendant.starts_with(path) && (descendant.size() == path.size() || descendant[path.size()] == '|');
}

void warn_of_item_without_path(MItSelectionList& item) {
    MObject node;
    item.getDependNode(node);
    MFnDependencyNode named(node);
    MGlobal::displayWarning(MString("Not exported, since it has no place in the hierarchy: ") + named.name());
}

} // namespace

MSelectionList selection_for_export(const MStringArray& names) {
    MSelectionList selection;
    if (names.length() == 0) {
        MGlobal::getActiveSelectionList(selection);
        return selection;
    }
    for (unsigned int i = 0; i < names.length(); ++i) {
        MSelectionList item_selection_list;
        MGlobal::getSelectionListByName(names[i], item_selection_list);
        if (item_selection_list.length() == 0)
            MGlobal::displayWarning(MString("Not exported, since the scene holds no such node: ") + names[i]);
        selection.merge(item_selection_list);
    }
    return selection;
}

NODE_LIST list_nodes(MSelectionList& selection) {
    NODE_LIST list;
    for (MItSelectionList item(selection); !item.isDone(); item.next()) {
        MDagPath path;
        if (!item.getDagPath(path) || path.length() == 0) {
            warn_of_item_without_path(item);
            continue;
        }
        list.indexes_to_skip.insert(list.nodes.length());
        list.nodes.append(path);
        collect_descendants(path, list.nodes);
    }
    return list;
}

// Only the ways that can lead to a match are walked, and below a match no name needs a look.
void collect_descendants(const MDagPath& path, MDagPathArray& nodes) {
    constexpr unsigned int NO_MATCH = std::numeric_limits<unsigned int>::max();
    const std::string wanted = path.fullPathName().asChar();
    unsigned int match_depth = NO_MATCH;
    for (MItDag walk(MItDag::kDepthFirst); !walk.isDone(); walk.next()) {
        const unsigned int depth = walk.depth();
        if (depth == 0) continue;
        if (match_depth == NO_MATCH || depth <= match_depth) {
            const std::string name = walk.fullPathName().asChar();
            match_depth = name.starts_with(wanted) ? depth : NO_MATCH;
            if (match_depth == NO_MATCH) {
                if (!is_ancestor(name, wanted)) walk.prune();
                continue;
            }
        }
        if (!qualifies(walk.currentItem())) continue;
        MDagPath found;
        walk.getPath(found);
        nodes.append(found);
    }
}

} // namespace VOR2_EXPORTER_MAYA
