#pragma once

#include <maya/MDagPathArray.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>

#include <set>

namespace VOR2_EXPORTER_MAYA {

/// What an export takes: each selected item, followed by the joints and transforms at and under it, a
/// parent before its children. A selected joint or transform so stands twice; only the second entry gets
/// a node in the file.
struct NODE_LIST {
    MDagPathArray nodes;
    std::set<unsigned int> indexes_to_skip; ///< of the first entry of each selected item
};

/// The named nodes in the order of their names, or the active selection when no name is given. A name
/// that isn't in the scene is passed over with a warning.
[[nodiscard]] MSelectionList selection_for_export(const MStringArray& names);

/// An item that has no place in the DAG is passed over with a warning.
///
/// At and under an item stands whatever has a full path that begins with the item's, as text: the item itself, all
/// under it, and also siblings whose names begin with its name, with all under them, in depth-first order. Point,
/// orient and parent constraints are left out; other kinds of transforms are not.
[[nodiscard]] NODE_LIST list_nodes(MSelectionList& selection);

} // namespace VOR2_EXPORTER_MAYA
