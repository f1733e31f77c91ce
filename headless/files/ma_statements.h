#pragma once

#include "headless/files/file_search.h"
#include "headless/files/ma_names.h"
#include "headless/script/set_attribute.h"

#include <deque>
#include <map>
#include <set>

namespace headless {

using WordList = std::span<const Word>;

/// Of a statement that is followed: a flag's value, or nothing when the flag isn't there. Flags without values can be
/// asked for too.
struct Flags {
    WordList words;

    const Word* find(std::string_view short_name, std::string_view long_name) const;
    bool has(std::string_view short_name, std::string_view long_name) const {
        return find(short_name, long_name) != nullptr;
    }
    std::string_view value(std::string_view short_name, std::string_view long_name) const;
};

/// A file that is referred to, as far as a scene's reading has come with it.
struct MaReference {
    SceneReference statement;
    bool loaded = false;
    bool kept = true; ///< where it isn't loaded, the scene keeps the statement
};

/// What the readers of a file and of the files it refers to have in common.
struct Reading {
    Reading(Scene& into, const FileSearch& where, const std::string& path)
        : scene(into), search(where), finder(where, path) {}

    Scene& scene;
    const FileSearch& search;
    FileFinder finder;
    MaNames names{scene};
    std::vector<NodeHandle> made;
    std::vector<std::string> open_files;
    int references_read = 0; ///< or looked for, a file as often as it was
    std::size_t referenced_bytes = 0;
    std::string base_namespace; ///< that names in the scene have and names in the files don't
    bool fresh = false;         ///< the scene held nothing of its own

    std::deque<MaReference> references; ///< in the order in which they were named
    // By the names that their nodes have as seen from the file read first.
    std::map<std::string, MaReference*, std::less<>> references_by_node;
    std::map<std::string, SceneReference, std::less<>> stated_above; ///< by the files around the one that refers
    std::vector<Error> problems;                                     ///< why references aren't there
    std::set<std::string> known_problems;

    void note_problem(const Error& problem) {
        if (known_problems.insert(problem.message).second) problems.push_back(problem);
    }
};

/// The statements of a file that make nodes and set and connect what they have. A name means what it means in that
/// file; a node that isn't there is an error, but the current node may be none.
class MaStatements {
public:
    /// `prefix` are the namespaces that the file's names stand in as seen from the file read first.
    MaStatements(Reading& reading, std::string prefix)
        : reading_(reading), scene_(reading.scene), prefix_(std::move(prefix)) {}

    // Each takes the words behind the command.
    Result<void> create_node(WordList words);
    Result<void> rename(WordList words);
    Result<void> select(WordList words);
    Result<void> parent(WordList words);
    Result<void> set_attr(WordList words);
    Result<void> add_attr(WordList words);
    Result<void> connect_attr(WordList words);
    Result<void> disconnect_attr(WordList words);

    Node* find(std::string_view name) const;
    Node* current() const { return current_; }
    /// From here on a path means the node at that very place and no other of its last name.
    void name_exactly(bool exactly) { exactly_ = exactly; }
    /// By "node.attribute"; what the node lacks is added.
    Result<Plug> plug_of(std::string_view name);
    Plug existing_plug(std::string_view name); ///< null where there is none
    Result<void> connect(const Plug& source, const Plug& destination);
    const std::string& prefix() const { return prefix_; }
    Reading& reading() { return reading_; }

protected:
    bool is_top_file() const { return reading_.open_files.size() == 1; }

    Reading& reading_;
    Scene& scene_;
    std::string prefix_;
    ValueUnits units_;
    std::vector<NodeHandle> scripts_;
    std::vector<std::pair<NodeHandle, std::string>> reference_nodes_; ///< by their names in `Reading`

private:
    struct Target {
        Node* node;
        std::string_view path;
    };
    static Error no_such(std::string_view name);
    Node* present(std::string_view type, std::string_view name, bool shared) const;
    Result<Target> target_of(std::string_view name) const;
    static Result<Plug> plug_at(const Target& target);
    static Result<Plug> next_element(const Target& to);
    bool is_kept_back(const Node& node) const;
    void keep_type(const Target& target);

    Node* current_ = nullptr;
    bool exactly_ = false;
    AttributeSetting setting_;         // kept for its storage
    const Node* typed_node_ = nullptr; ///< whose list was told last with a type
    std::string typed_list_, list_type_;
};

} // namespace headless
