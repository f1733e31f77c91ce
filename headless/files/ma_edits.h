#pragma once

#include "headless/files/ma_statements.h"
#include "headless/files/reference_edits.h"

namespace headless {

/// Makes the changes of one file to what it refers to, once all of that is read. Changes to what isn't there are passed
/// over. The file's own connections lead to place holders on the reference nodes; they end where these stand for.
class MaEdits {
public:
    explicit MaEdits(MaStatements& file) : file_(file), reading_(file.reading()) {}

    /// Those of one reference node. What concerns references that aren't loaded is kept for the nodes of these.
    void apply(Node& reference_node, const std::vector<ReferenceEditGroup>& groups);
    /// Once after all of them.
    void join();

private:
    void apply(const ReferenceEdit& edit);
    void parent(const ReferenceEdit& edit);
    void add_attribute(const ReferenceEdit& edit);
    void set(const ReferenceEdit& edit);
    void disconnect(const ReferenceEdit& edit);
    void cut_off(const ReferenceEdit& edit);
    void lock(const ReferenceEdit& edit, bool locked);
    void note_ends(const ReferenceEdit& edit);
    void stand_for(const std::string& place_holder, const std::string& plug);
    void keep(const MaReference& reference, const ReferenceEditGroup& group);
    void store_kept();
    std::string moved_place_holder(Node& to, const std::string& from);
    Plug place_holder(const std::string& name) const;
    Plug end_of(const Plug& plug) const;
    bool stands_for_nothing(const Plug& plug) const;

    MaStatements& file_;
    Reading& reading_;
    std::vector<std::pair<Plug, Plug>> ends_; ///< place holders, and what they stand for
    std::map<std::pair<const Node*, PlugKey>, std::size_t> places_;
    std::set<const Node*> loaded_;                   ///< reference nodes
    std::map<Node*, std::vector<std::string>> kept_; ///< further words for nodes of references that aren't loaded
};

} // namespace headless
