#include "host/export/node_list.h"

#include <maya/MDagPath.h>
#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MItDag.h>
#include <maya/MItSelectionList.h>
#include <maya/MObject.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace VOR2_EXPORTER_MAYA {
namespace {

bool qualifies(const MObject& node) {
    if (!node.hasFn(MFn::kJoint) && !node.hasFn(MFn::kTransform)) return false;
    const MFn::Type type = node.apiType();
    return type != MFn::kOrientConstraint && type != MFn::kParentConstraint && type != MFn::kPointConstraint;
}

std::string last_name(const MDagPath& path) {
    const std::string full = path.fullPathName().asChar();
    return full.substr(full.rfind('|') + 1);
}

void append_subtree(const MDagPath& root, MDagPathArray& nodes) {
    MItDag walk(MItDag::kDepthFirst);
    for (walk.reset(root, MItDag::kDepthFirst); !walk.isDone(); walk.next()) {
        if (!qualifies(walk.currentItem())) continue;
        MDagPath found;
        walk.getPath(found);
        nodes.append(found);
    }
}

/// The nodes side by side under one place, by how their names begin.
class SIBLINGS {
public:
    explicit SIBLINGS(const MDagPath& one_of_them) {
        MItDag walk(MItDag::kDepthFirst);
        MDagPath above(one_of_them);
        if (above.length() > 1 && above.pop()) walk.reset(above, MItDag::kDepthFirst);
        for (walk.next(); !walk.isDone(); walk.next()) {
            MDagPath path;
            walk.getPath(path);
            my_places.emplace_back(last_name(path), my_paths.length());
            my_paths.append(path);
            walk.prune();
        }
        std::sort(my_places.begin(), my_places.end());
    }

    void append_with_all_under_them(const std::string& beginning, MDagPathArray& nodes) const {
        std::vector<unsigned int> matches;
        for (auto at = std::lower_bound(my_places.begin(), my_places.end(), PLACE(beginning, 0));
             at != my_places.end() && at->first.starts_with(beginning); ++at)
            matches.push_back(at->second);
        std::sort(matches.begin(), matches.end());
        for (const unsigned int place : matches) append_subtree(my_paths[place], nodes);
    }

private:
    using PLACE = std::pair<std::string, unsigned int>;

    MDagPathArray my_paths;       ///< in the hierarchy's order
    std::vector<PLACE> my_places; ///< of `my_paths`, by name
};

using SIBLINGS_BY_PLACE = std::map<std::string, SIBLINGS>; // by the full path above them

void collect_descendants(const MDagPath& path, SIBLINGS_BY_PLACE& by_place, MDagPathArray& nodes) {
    const std::string full = path.fullPathName().asChar();
    const std::size_t bar = full.rfind('|');
    const SIBLINGS& siblings = by_place.try_emplace(full.substr(0, bar), path).first->second;
    siblings.append_with_all_under_them(full.substr(bar + 1), nodes);
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
    SIBLINGS_BY_PLACE by_place;
    for (MItSelectionList item(selection); !item.isDone(); item.next()) {
        MDagPath path;
        if (!item.getDagPath(path) || path.length() == 0) {
            warn_of_item_without_path(item);
            continue;
        }
        list.indexes_to_skip.insert(list.nodes.length());
        list.nodes.append(path);
        collect_descendants(path, by_place, list.nodes);
    }
    return list;
}

} // namespace VOR2_EXPORTER_MAYA
