#include "tests/headless/api/api_test.h"

#include <maya/MAngle.h>
#include <maya/MAnimControl.h>
#include <maya/MDistance.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlugArray.h>

#include <limits>
#include <sstream>

namespace {

class Plugs : public ApiTest {};

TEST_F(Plugs, give_and_take_values_in_the_hosts_own_units) {
    MFnDependencyNode fn(make("joint", "j"));
    MPlug tx = fn.findPlug("translateX"), rx = fn.findPlug("rx");
    MDistance two_metres(2, MDistance::kMeters);
    MAngle half_turn(180, MAngle::kDegrees);
    EXPECT_TRUE(tx.setValue(two_metres));
    EXPECT_EQ(tx.asDouble(), 200.0);
    EXPECT_TRUE(rx.setValue(half_turn));
    EXPECT_NEAR(rx.asMAngle().asDegrees(), 180, 1e-12);
    EXPECT_TRUE(fn.findPlug("ssc").setValue(false));
    EXPECT_FALSE(fn.findPlug("ssc").asBool());
    EXPECT_TRUE(fn.findPlug("otp").setValue("hand"));
    EXPECT_EQ(fn.findPlug("otp").asString(), "hand");
    EXPECT_FALSE(tx.setValue("text"));
    EXPECT_EQ(messages.size(), 1u);
    MStatus status;
    EXPECT_TRUE(fn.findPlug("nothing", &status).isNull());
    EXPECT_FALSE(status);
    EXPECT_EQ(fn.findPlug("sx").asInt(), 1);
}

TEST_F(Plugs, out_time_of_the_time_node_is_the_clock) {
    MPlug clock = MFnDependencyNode(node("time1")).findPlug("outTime");
    MTime ten;
    ten.setValue(10.0);
    EXPECT_TRUE(clock.setValue(ten));
    EXPECT_EQ(MAnimControl::currentTime().value(), 10.0);
    EXPECT_TRUE(clock.setValue(12.5)); // a plain number counts in the scene's unit
    EXPECT_EQ(clock.asMTime().value(), 12.5);
    EXPECT_EQ(clock.asDouble(), 12.5);
    clock.setValue(std::numeric_limits<double>::infinity());
    EXPECT_EQ(MAnimControl::currentTime().value(), 12.5);
}

TEST_F(Plugs, take_apart_arrays_and_compounds) {
    MFnDependencyNode fn(make("parentConstraint", "c"));
    MPlug targets = fn.findPlug("target");
    EXPECT_TRUE(targets.isArray());
    EXPECT_EQ(targets.numElements(), 0u);
    MPlug weight = targets.elementByLogicalIndex(5).child(1);
    EXPECT_EQ(weight.name(), "c.target[5].targetWeight");
    EXPECT_EQ(weight.partialName(), "tg[5].tw");
    weight.setValue(0.25);
    EXPECT_EQ(targets.numElements(), 1u);
    EXPECT_TRUE(targets[0].isElement());
    EXPECT_EQ(targets[0].logicalIndex(), 5u);
    EXPECT_EQ(targets[0].array(), targets);
    EXPECT_EQ(weight.parent(), targets[0]);
    EXPECT_TRUE(targets[1].isNull());
    EXPECT_TRUE(targets.child(0).isNull()); // of no element
    EXPECT_EQ(fn.findPlug("t").numChildren(), 3u);
    EXPECT_TRUE(fn.findPlug("t").child(3).isNull());
}

TEST_F(Plugs, know_their_connections_and_locks) {
    MFnDependencyNode a(make("joint", "a")), b(make("joint", "b"));
    ASSERT_TRUE(scene().connect(*scene().find_plug("a.tx"), *scene().find_plug("b.ty")));
    MPlugArray found;
    EXPECT_TRUE(b.findPlug("ty").connectedTo(found, true, false));
    EXPECT_EQ(found[0].name(), "a.translate.translateX");
    EXPECT_TRUE(a.findPlug("tx").connectedTo(found, true, true));
    EXPECT_EQ(found.length(), 1u);
    EXPECT_FALSE(a.findPlug("tz").isConnected());
    MPlug tz = a.findPlug("tz");
    tz.setLocked(true);
    EXPECT_FALSE(tz.setValue(1.0));
    EXPECT_EQ(messages.back(),
              "E: The attribute 'a.translate.translateZ' is locked or connected and cannot be modified");
}

TEST_F(Plugs, read_and_write_numbers_of_every_kind) {
    MFnDependencyNode fn(make("joint", "j"));
    MPlug tx = fn.findPlug("tx"), order = fn.findPlug("ro"), kind = fn.findPlug("otp"), shown = fn.findPlug("v");
    EXPECT_TRUE(tx.setValue(0.1f));
    EXPECT_EQ(tx.asFloat(), 0.1f);
    EXPECT_TRUE(tx.setValue(40000));
    EXPECT_EQ(tx.asShort(), 32767); // the nearest there is
    EXPECT_EQ(tx.asMDistance().asMeters(), 400.0);
    EXPECT_TRUE(order.setValue(static_cast<short>(3)));
    EXPECT_EQ(order.asShort(), 3);
    bool truth = true;
    int whole = 0;
    float single = 0;
    double number = 0;
    MString word;
    MTime time;
    shown.setValue(false);
    kind.setValue("hand");
    MAnimControl::setCurrentTime(MTime(12, MTime::kFilm));
    EXPECT_TRUE(shown.getValue(truth));
    EXPECT_TRUE(order.getValue(whole));
    EXPECT_TRUE(tx.getValue(single));
    EXPECT_TRUE(tx.getValue(number));
    EXPECT_TRUE(kind.getValue(word));
    EXPECT_TRUE(MFnDependencyNode(node("time1")).findPlug("outTime").getValue(time));
    EXPECT_FALSE(truth);
    EXPECT_EQ(whole, 3);
    EXPECT_EQ(single, 40000.0f);
    EXPECT_EQ(number, 40000.0);
    EXPECT_EQ(word, "hand");
    EXPECT_EQ(time.as(MTime::kSeconds), 0.5);
    const MPlug none;
    EXPECT_FALSE(none.getValue(truth) || none.getValue(whole) || none.getValue(single) || none.getValue(number) ||
                 none.getValue(word) || none.getValue(time));
    EXPECT_FALSE(MPlug().setValue(1) || MPlug().setKeyable(true) || MPlug().setLocked(true));
}

TEST_F(Plugs, tell_wholes_from_parts_and_what_may_be_changed) {
    MFnDependencyNode fn(make("joint", "j"));
    MPlug whole = fn.findPlug("t"), part = whole.child(1);
    EXPECT_TRUE(whole.isCompound());
    EXPECT_FALSE(part.isCompound());
    EXPECT_TRUE(part.isChild());
    EXPECT_FALSE(whole.isChild());
    EXPECT_TRUE(part.isKeyable());
    EXPECT_TRUE(part.setKeyable(false));
    EXPECT_FALSE(part.isKeyable());
    EXPECT_TRUE(whole.child(0).isKeyable());
    EXPECT_FALSE(part.isLocked());
    EXPECT_TRUE(whole.setLocked(true));
    EXPECT_TRUE(part.isLocked()); // as part of what is locked
    EXPECT_FALSE(part.setValue(1.0));
    EXPECT_TRUE(whole.setLocked(false));
    EXPECT_TRUE(part.setLocked(true));
    EXPECT_FALSE(whole.isLocked()); // its other parts are free
    EXPECT_FALSE(part.isKeyable()); // each mark on its own
    MStatus status;
    EXPECT_FALSE(MPlug().isLocked(&status));
    EXPECT_FALSE(status);
    EXPECT_EQ(part.info(), "j.translate.translateY");
}

} // namespace
