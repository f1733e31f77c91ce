#pragma once

/// Where in memory the records lie that a script holds, for as long as it holds them.
///
/// The library owns by value: an element of a list moves when the list grows, and a record that is replaced is
/// destroyed with all that it owns. Scripts keep references to any of it. So each block of memory that a script looks
/// into, be it an owned object, a list's elements or a list's numbers, has an `Anchor` while anybody looks, and what
/// is taken out of the scene is handed to its anchor, if it has one, instead of being destroyed. Anchors know those
/// of the objects around them, so that whoever looks at a track's keys holds the anchors of the track, of the node,
/// and of the scene.
///
/// References to an element follow it when its list is changed. Those to an element or object that was taken out
/// go on as they are, with a thing of their own; so do arrays of numbers.
///
/// All of this is used by one thread at a time: by whoever holds the interpreter's lock.

#include "python/src/class_table.h"

#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace vor2::python {

class Anchor;
class Place;
using AnchorRef = std::shared_ptr<Anchor>;

/// What all that belongs to one root object shares, be it a scene or a record that a script made.
struct Keeper {
    std::unordered_map<const void*, std::weak_ptr<Anchor>> anchors;
    bool is_busy = false;   ///< the library works on it without the interpreter's lock
    bool is_changed = true; ///< what derives from the records may be out of date
    std::size_t views = 0;  ///< arrays that look into any of it
    std::string file;       ///< that a scene was loaded from
};

class Anchor : public std::enable_shared_from_this<Anchor> {
public:
    Anchor(std::shared_ptr<Keeper> keeper, AnchorRef parent, void* base, std::size_t stride);
    ~Anchor();
    Anchor(const Anchor&) = delete;
    Anchor& operator=(const Anchor&) = delete;

    /// A new root, which owns the object.
    static AnchorRef make_root(void* object, const ClassInfo& info);
    /// The anchor of a block within `parent`'s, made where there is none.
    static AnchorRef of_block(const AnchorRef& parent, void* base, std::size_t stride);
    /// The same, only if there is one.
    static AnchorRef find(Keeper& keeper, const void* base);

    const std::shared_ptr<Keeper>& keeper() const { return keeper_; }
    char* base() const { return base_; }
    std::size_t stride() const { return stride_; }
    /// How many arrays of numbers look straight into the block.
    std::size_t views = 0;
    /// Of the numbers of a field with that: called for the object around them whenever a script may have changed them.
    void (*touched)(void* object) = nullptr;
    void touch() const;
    /// Keeps something alive as long as anybody looks.
    void keep(Kept what) { kept_.push_back(std::move(what)); }
    /// The block left its scene and is on its own, as what holds it.
    void leave(Kept block);
    /// The `old_count` elements moved to another block. `order` is as `ListOperations::rebuild` has it, `old` what
    /// that gave.
    void move_elements(void* base, std::span<const std::ptrdiff_t> order, std::size_t old_count, Kept old);

    static std::size_t count; ///< of anchors that are alive

private:
    friend class Place;

    std::shared_ptr<Keeper> keeper_;
    AnchorRef parent_;
    char* base_;
    std::size_t stride_;
    std::vector<Kept> kept_;
    std::unordered_set<Place*> places_;
};

/// An object's place, or a member's within it.
class Place {
public:
    explicit Place(AnchorRef anchor, std::size_t index = 0, std::ptrdiff_t offset = 0);
    Place(const Place& other) : Place(other.anchor_, other.index_, other.offset_) {}
    Place& operator=(const Place&) = delete;
    ~Place();

    const AnchorRef& anchor() const { return anchor_; }
    Keeper& keeper() const { return *anchor_->keeper(); }
    void* address() const { return anchor_->base() + index_ * anchor_->stride() + offset_; }
    /// Of a member that lies within this one.
    Place member(std::ptrdiff_t offset) const { return Place(anchor_, index_, offset_ + offset); }
    /// Of an object on the heap that this one owns.
    Place object(void* address) const { return Place(Anchor::of_block(anchor_, address, 0)); }
    /// Of an element of the list that lies here.
    Place element(const ListOperations& list, std::size_t index) const;

private:
    friend class Anchor;

    AnchorRef anchor_;
    std::size_t index_;
    std::ptrdiff_t offset_;
};

/// Hands on to its anchor what was at `address` and left the scene; destroys it where nobody looks.
void let_go(Keeper& keeper, const void* address, Kept what);
/// Tells every object whose numbers a script can change at this moment that it may have.
void touch_all(const Keeper& keeper);

} // namespace vor2::python
