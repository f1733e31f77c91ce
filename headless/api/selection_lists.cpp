// MSelectionList and MItSelectionList.
#include "headless/api/access.h"
#include "headless/api/held.h"

#include <maya/MItSelectionList.h>
#include <maya/MStringArray.h>

using namespace headless;

template class headless::Held<SelectionList>;

namespace {

const SelectionItem* item_at(const SelectionList& list, unsigned int i) {
    return i < list.items().size() ? &list.items()[i] : nullptr;
}

std::string name_of(const SelectionItem& item) {
    Scene& scene = Access::scene();
    Node* node = scene.find(item.node);
    if (!node) return {};
    std::string out = item.path ? scene.partial_name(item.path) : node->name();
    if (item.plug) out += Plug{node, *item.plug}.path();
    if (!item.components.empty()) out += "." + item.components;
    return out;
}

} // namespace

unsigned int MSelectionList::length(MStatus* status) const {
    put(status, MStatus::kSuccess);
    return static_cast<unsigned int>(list_->items().size());
}

MStatus MSelectionList::clear() {
    list_->clear();
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MString& name, const bool searchChildNamespaces) {
    Scene& scene = Access::scene();
    const auto found = scene.resolve(Access::text(name));
    bool any = static_cast<bool>(found);
    const auto take = [this](const std::vector<SelectionItem>& items) {
        for (const SelectionItem& item : items) list_->add(item);
    };
    if (found) take(*found);
    if (searchChildNamespaces) {
        // A namespace is any run of names before the last ":".
        for (const std::string& space : scene.namespaces()) {
            const auto there = scene.resolve(space + ":" + Access::text(name));
            if (!there) continue;
            take(*there);
            any = true;
        }
    }
    return any ? MStatus::kSuccess : MStatus::kInvalidParameter;
}

MStatus MSelectionList::add(const MObject& object, const bool) {
    const Node* node = Access::node(object);
    if (!node) return MStatus::kInvalidParameter;
    list_->add(Access::scene().item(*node));
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MDagPath& path, const MObject&, const bool) {
    if (!path.isValid()) return MStatus::kInvalidParameter;
    list_->add({Access::path(path), Access::leaf(path), {}, {}});
    return MStatus::kSuccess;
}

MStatus MSelectionList::add(const MPlug& plug, const bool) {
    const Plug found = Access::plug(plug);
    if (!found) return MStatus::kInvalidParameter;
    SelectionItem item = Access::scene().item(*found.node);
    item.plug = found.key;
    list_->add(item);
    return MStatus::kSuccess;
}

MStatus MSelectionList::remove(unsigned int i) {
    const SelectionItem* item = item_at(*list_, i);
    if (!item) return MStatus::kInvalidParameter;
    list_->remove(SelectionItem(*item));
    return MStatus::kSuccess;
}

MStatus MSelectionList::merge(const MSelectionList& other, const MergeStrategy strategy) {
    const std::vector<SelectionItem> theirs = other.list_->items(); // a copy: the other may be this one
    for (const SelectionItem& item : theirs) {
        const bool removed = strategy != kMergeNormal && list_->remove(item);
        if (!removed && strategy != kRemoveFromList) list_->add(item);
    }
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDependNode(unsigned int i, MObject& node) const {
    const SelectionItem* item = item_at(*list_, i);
    if (!item || !Access::scene().find(item->node)) return MStatus::kFailure;
    node = Access::object(item->node);
    return MStatus::kSuccess;
}

MStatus MSelectionList::getDagPath(unsigned int i, MDagPath& path, MObject& component) const {
    const SelectionItem* item = item_at(*list_, i);
    if (!item || !item->path || !Access::scene().find(item->node)) return MStatus::kFailure;
    path = Access::path(item->path);
    if (&component != &MObject::kNullObj) component = MObject();
    return MStatus::kSuccess;
}

MStatus MSelectionList::getPlug(unsigned int i, MPlug& plug) const {
    const SelectionItem* item = item_at(*list_, i);
    Node* node = item ? Access::scene().find(item->node) : nullptr;
    if (!node || !item->plug) return MStatus::kFailure;
    plug = Access::plug(Plug{node, *item->plug});
    return MStatus::kSuccess;
}

MStatus MSelectionList::getSelectionStrings(MStringArray& names) const {
    names.clear();
    for (const SelectionItem& item : list_->items()) names.append(text(name_of(item)));
    return MStatus::kSuccess;
}

MStatus MSelectionList::getSelectionStrings(unsigned int i, MStringArray& names) const {
    const SelectionItem* item = item_at(*list_, i);
    if (!item) return MStatus::kFailure;
    names.clear();
    return names.append(text(name_of(*item)));
}

bool MSelectionList::hasItem(const MObject& object, MStatus* status) const {
    const Node* node = Access::node(object);
    return node ? succeed(status, list_->contains(Access::scene().item(*node))) : fail(status, false);
}

bool MSelectionList::hasItem(const MDagPath& path, const MObject&, MStatus* status) const {
    return succeed(status, list_->contains({Access::path(path), Access::leaf(path), {}, {}}));
}

MItSelectionList::MItSelectionList(const MSelectionList& list, MFn::Type filter, MStatus* status)
    : list_(list), filter_(filter) {
    put(status, reset());
}

void MItSelectionList::skip_others() {
    for (; at_ < list_.length(); ++at_) {
        MObject node;
        if (list_.getDependNode(at_, node) && (filter_ == MFn::kInvalid || node.hasFn(filter_))) return;
    }
}

bool MItSelectionList::isDone(MStatus* status) {
    put(status, MStatus::kSuccess);
    return at_ >= list_.length();
}

MStatus MItSelectionList::next() {
    if (isDone()) return MStatus::kFailure;
    ++at_;
    skip_others();
    return MStatus::kSuccess;
}

MStatus MItSelectionList::reset() {
    at_ = 0;
    skip_others();
    return MStatus::kSuccess;
}

MStatus MItSelectionList::setFilter(MFn::Type filter) {
    filter_ = filter;
    skip_others();
    return MStatus::kSuccess;
}

MItSelectionList::selItemType MItSelectionList::itemType(MStatus* status) {
    MDagPath path;
    MPlug plug;
    if (isDone()) return fail(status, kUnknownItem);
    if (list_.getPlug(at_, plug)) return succeed(status, kPlugSelectionItem);
    return succeed(status, list_.getDagPath(at_, path) ? kDagSelectionItem : kDNselectionItem);
}

MStatus MItSelectionList::getDependNode(MObject& node) {
    return list_.getDependNode(at_, node);
}
MStatus MItSelectionList::getDagPath(MDagPath& path) {
    return list_.getDagPath(at_, path);
}
MStatus MItSelectionList::getDagPath(MDagPath& path, MObject& component) {
    return list_.getDagPath(at_, path, component);
}
MStatus MItSelectionList::getPlug(MPlug& plug) {
    return list_.getPlug(at_, plug);
}
MStatus MItSelectionList::getStrings(MStringArray& names) {
    return list_.getSelectionStrings(at_, names);
}
