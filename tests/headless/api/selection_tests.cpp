#include "tests/headless/api/api_test.h"

#include <maya/MFn.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MItSelectionList.h>
#include <maya/MPlug.h>
#include <maya/MStringArray.h>

namespace {

class Selection : public ApiTest {
protected:
    static Names strings(const MSelectionList& list) {
        MStringArray found;
        EXPECT_TRUE(list.getSelectionStrings(found));
        Names out;
        for (unsigned int i = 0; i < found.length(); ++i) out.push_back(found[i].asChar());
        return out;
    }
};

TEST_F(Selection, lists_hold_nodes_paths_and_plugs_once_each) {
    const MObject a = make("joint", "a"), b = make("joint", "b", a), gone = make("joint", "gone");
    const MPlug plug = MFnDependencyNode(a).findPlug("tx");
    const MDagPath lost = path("gone");
    scene().remove_node(**scene().find_node("gone"));
    MSelectionList list;
    EXPECT_TRUE(list.add(plug));
    EXPECT_TRUE(list.add(plug));
    EXPECT_TRUE(list.add(path("b")));
    EXPECT_TRUE(list.add(b));
    EXPECT_TRUE(list.add(node("time1")));
    EXPECT_EQ(list.add(gone), MStatus::kInvalidParameter);
    EXPECT_EQ(list.add(lost), MStatus::kInvalidParameter);
    EXPECT_EQ(list.add(MPlug()), MStatus::kInvalidParameter);
    EXPECT_EQ(strings(list), (Names{"a.translate.translateX", "b", "time1"}));
    EXPECT_FALSE(list.hasItem(a)); // one of its plugs is not the node
    EXPECT_TRUE(list.hasItem(b));
    EXPECT_TRUE(list.hasItem(path("b")));
    EXPECT_FALSE(list.hasItem(path("a")));
    MStatus status;
    EXPECT_FALSE(list.hasItem(gone, &status));
    EXPECT_FALSE(status);
    MPlug back;
    EXPECT_TRUE(list.getPlug(0, back));
    EXPECT_EQ(back, plug);
    EXPECT_FALSE(list.getPlug(1, back));
    EXPECT_FALSE(list.getPlug(3, back));
    MStringArray one;
    EXPECT_TRUE(list.getSelectionStrings(1, one));
    EXPECT_EQ(one.length(), 1u);
    EXPECT_EQ(one[0], "b");
    EXPECT_FALSE(list.getSelectionStrings(3, one));
    EXPECT_EQ(list.remove(3), MStatus::kInvalidParameter);
    MSelectionList copy;
    copy = list;
    EXPECT_TRUE(list.remove(0));
    EXPECT_EQ(strings(list), (Names{"b", "time1"}));
    EXPECT_EQ(copy.length(), 3u);
}

TEST_F(Selection, names_tell_instances_apart_and_are_searched_in_namespaces_when_asked) {
    const MObject a = make("transform", "a"), b = make("transform", "b");
    MObject shared = make("transform", "s", a);
    ASSERT_TRUE(MFnDagNode(b).addChild(shared, MFnDagNode::kNextPos, true));
    MDagPath second = path("b");
    ASSERT_TRUE(second.push(shared));
    MSelectionList list;
    list.add(second);
    EXPECT_EQ(strings(list), Names{"b|s"});
    EXPECT_FALSE(list.hasItem(path("|a|s")));
    make("joint", "one:hand");
    make("joint", "one:two:hand");
    list.clear();
    EXPECT_FALSE(list.add("hand"));
    EXPECT_TRUE(list.add("hand", true));
    EXPECT_EQ(strings(list), (Names{"one:hand", "one:two:hand"}));
    make("joint", "hand");
    list.clear();
    EXPECT_TRUE(list.add("hand", true));
    EXPECT_EQ(strings(list), (Names{"hand", "one:hand", "one:two:hand"}));
    EXPECT_FALSE(list.add("foot", true));
}

TEST_F(Selection, walks_say_what_each_entry_is) {
    const MObject a = make("joint", "a");
    MSelectionList list;
    list.add("a");
    list.add(MFnDependencyNode(a).findPlug("rx"));
    list.add("lambert1");
    MItSelectionList it(list);
    MDagPath at;
    MObject component = a, found;
    MPlug plug;
    MStringArray names;
    EXPECT_EQ(it.itemType(), MItSelectionList::kDagSelectionItem);
    EXPECT_TRUE(it.getDagPath(at, component));
    EXPECT_EQ(at, path("a"));
    EXPECT_TRUE(component.isNull()); // the whole of it
    EXPECT_FALSE(it.getPlug(plug));
    it.next();
    EXPECT_EQ(it.itemType(), MItSelectionList::kPlugSelectionItem);
    EXPECT_TRUE(it.getPlug(plug));
    EXPECT_EQ(plug.name(), "a.rotate.rotateX");
    it.next();
    EXPECT_EQ(it.itemType(), MItSelectionList::kDNselectionItem);
    EXPECT_FALSE(it.getDagPath(at));
    EXPECT_TRUE(it.getStrings(names));
    EXPECT_EQ(names[0], "lambert1");
    it.next();
    MStatus status;
    EXPECT_EQ(it.itemType(&status), MItSelectionList::kUnknownItem);
    EXPECT_FALSE(status);
    EXPECT_FALSE(it.getStrings(names));
    it.setFilter(MFn::kLambert);
    it.reset();
    EXPECT_TRUE(it.getDependNode(found));
    EXPECT_EQ(found, node("lambert1"));
}

TEST_F(Selection, of_the_scene_takes_objects_paths_and_lists) {
    const auto selected = [] {
        MSelectionList list;
        MGlobal::getActiveSelectionList(list);
        return names(list);
    };
    MObject a = make("joint", "a"), none;
    make("joint", "b");
    EXPECT_TRUE(MGlobal::select(a, MGlobal::kReplaceList));
    EXPECT_TRUE(MGlobal::select(path("b"), MObject::kNullObj));
    EXPECT_EQ(selected(), (Names{"|a", "|b"}));
    EXPECT_EQ(MGlobal::select(none), MStatus::kInvalidParameter);
    EXPECT_EQ(MGlobal::select(MDagPath(), MObject::kNullObj), MStatus::kInvalidParameter);
    EXPECT_TRUE(MGlobal::unselect(a));
    EXPECT_EQ(selected(), Names{"|b"});
    MSelectionList list;
    for (const char* name : {"front", "b"}) list.add(name);
    EXPECT_TRUE(MGlobal::setActiveSelectionList(list, MGlobal::kXORWithList));
    EXPECT_EQ(selected(), Names{"|front"});
    EXPECT_TRUE(MGlobal::setActiveSelectionList(list));
    EXPECT_EQ(selected(), (Names{"|front", "|b"}));
    EXPECT_TRUE(MGlobal::unselectByName("front"));
    EXPECT_FALSE(MGlobal::unselectByName("nobody"));
    EXPECT_EQ(selected(), Names{"|b"});
    EXPECT_FALSE(MGlobal::getSelectionListByName("nobody", list));
    EXPECT_TRUE(list.isEmpty());
}

} // namespace
