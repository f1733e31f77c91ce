#pragma once

#include "headless/graph/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// One change that a scene makes to what it refers to, as a reference node's `edits` keep it: a number for what is
/// done and words for what it is done to. Names are those of the file that makes the change.
struct ReferenceEdit {
    enum class Kind {
        parent = 0,           ///< node, new parent, flags
        add_attribute = 1,    ///< node, long name, short name, flags
        set = 2,              ///< node, attribute, what stands behind the name in `setAttr`
        disconnect = 3,       ///< source, destination, flags
        delete_attribute = 4, ///< node, attribute, flags
        connect = 5,          ///< see `Ends`
        relate = 7,           ///< relationship, node, and two counted lists of plugs
        lock = 8,             ///< node, attribute
        unlock = 9,
    };
    /// Of a connection, which ends are within the reference. The end is told first (of both, the source and the
    /// destination), then the place holder that stands for it in the file's own connections; one for each end.
    enum class Ends { both = 0, source = 1, destination = 2 };

    struct Field {
        enum class Role { name, text, number } role; ///< a name is a node's or a plug's
        std::string value;
    };

    Kind kind = Kind::set;
    Ends ends = Ends::both;
    std::vector<Field> fields; ///< behind the numbers

    const std::string& field(std::size_t i) const { return fields[i].value; }
};

/// The changes to one reference: that of the node itself, or one that lies in it.
struct ReferenceEditGroup {
    std::string reference; ///< the name of its reference node
    std::vector<ReferenceEdit> edits;
};

/// Reads the words behind `setAttr ".ed" -type "dataReferenceEdits"`. An error says where the counts and the words
/// don't agree or which edit is of no known kind; none of the edits counts then.
Result<std::vector<ReferenceEditGroup>> parse_reference_edits(const std::vector<std::string>& tokens);

/// Appends the group as words that `parse_reference_edits` takes.
void append_tokens(const ReferenceEditGroup& group, std::vector<std::string>& out);

/// Puts a prefix in front of each name of a path or a plug that doesn't begin at the root namespace.
std::string with_prefix(std::string_view name, std::string_view prefix);
/// The same for all names in a group.
void put_prefix(ReferenceEditGroup& group, std::string_view prefix);

} // namespace headless
