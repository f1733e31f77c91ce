#include "python/src/places.h"

namespace vor2::python {

std::size_t Anchor::count = 0;

Anchor::Anchor(std::shared_ptr<Keeper> keeper, AnchorRef parent, void* base, std::size_t stride)
    : keeper_(std::move(keeper)), parent_(std::move(parent)), base_(static_cast<char*>(base)), stride_(stride) {
    ++count;
}

Anchor::~Anchor() {
    touch();
    const auto entry = keeper_->anchors.find(base_);
    if (entry != keeper_->anchors.end() && entry->second.expired()) keeper_->anchors.erase(entry);
    --count;
    // One by one, since objects may be nested as deep as a file says.
    for (AnchorRef last = std::move(parent_); last && last.use_count() == 1;) {
        last->touch();
        AnchorRef next = std::move(last->parent_);
        last = std::move(next);
    }
}

AnchorRef Anchor::make_root(void* object, const ClassInfo& info) {
    auto anchor = std::make_shared<Anchor>(std::make_shared<Keeper>(), nullptr, object, 0);
    anchor->keep(Kept(object, info.destroy));
    anchor->keeper_->anchors[object] = anchor;
    return anchor;
}

AnchorRef Anchor::of_block(const AnchorRef& parent, void* base, std::size_t stride) {
    AnchorRef anchor = find(*parent->keeper_, base);
    if (anchor) return anchor;
    anchor = std::make_shared<Anchor>(parent->keeper_, parent, base, stride);
    parent->keeper_->anchors[base] = anchor;
    return anchor;
}

AnchorRef Anchor::find(Keeper& keeper, const void* base) {
    const auto entry = keeper.anchors.find(base);
    return entry == keeper.anchors.end() ? nullptr : entry->second.lock();
}

void Anchor::touch() const {
    if (touched != nullptr && parent_) touched(parent_->base_);
}

void Anchor::leave(Kept block) {
    keep(std::move(block));
    parent_.reset();
}

void Anchor::move_elements(void* base, std::span<const std::ptrdiff_t> order, std::size_t old_count, Kept old) {
    std::unordered_map<std::size_t, std::size_t> places_of;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (order[i] >= 0) places_of.emplace(static_cast<std::size_t>(order[i]), i);
    }
    const AnchorRef self = shared_from_this();
    std::unordered_map<std::size_t, AnchorRef> gone;
    const std::vector<Place*> all(places_.begin(), places_.end());
    for (Place* place : all) {
        const auto found = places_of.find(place->index_);
        if (found != places_of.end()) {
            place->index_ = found->second;
            continue;
        }
        // It stays where it is, in the old block, which this anchor holds.
        AnchorRef& alone = gone[place->index_];
        if (!alone) {
            alone = std::make_shared<Anchor>(keeper_, nullptr, base_ + place->index_ * stride_, 0);
            alone->keep(self);
        }
        places_.erase(place);
        place->anchor_ = alone;
        place->index_ = 0;
        alone->places_.insert(place);
    }
    // What lies below an element that was left out knows this anchor alone.
    if (views > 0 || places_of.size() < old_count) keep(std::move(old));
    keeper_->anchors.erase(base_);
    base_ = static_cast<char*>(base);
    if (base_ != nullptr) keeper_->anchors[base_] = self;
}

Place::Place(AnchorRef anchor, std::size_t index, std::ptrdiff_t offset)
    : anchor_(std::move(anchor)), index_(index), offset_(offset) {
    anchor_->places_.insert(this);
}

Place::~Place() {
    anchor_->places_.erase(this);
}

Place Place::element(const ListOperations& list, std::size_t index) const {
    return Place(Anchor::of_block(anchor_, list.data(address()), list.stride), index);
}

void let_go(Keeper& keeper, const void* address, Kept what) {
    if (const AnchorRef anchor = Anchor::find(keeper, address)) anchor->leave(std::move(what));
}

void touch_all(const Keeper& keeper) {
    for (const auto& [base, weak] : keeper.anchors) {
        if (const AnchorRef anchor = weak.lock()) anchor->touch();
    }
}

} // namespace vor2::python
