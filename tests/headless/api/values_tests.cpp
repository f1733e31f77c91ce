#include "tests/headless/api/api_test.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>

#include <numbers>
#include <sstream>

namespace {

TEST(Strings, behave_like_the_hosts) {
    MString text("ab:cd:e");
    EXPECT_EQ(text.length(), 7u);
    EXPECT_EQ(text.index(':'), 2);
    EXPECT_EQ(text.rindex(':'), 5);
    EXPECT_EQ(text.rindex('x'), -1);
    EXPECT_EQ(text.substring(3, 4), "cd"); // both ends belong to it
    EXPECT_EQ(text.substring(-5, 100), text);
    EXPECT_EQ(text.substring(4, 2), "");
    MStringArray pieces;
    MString("::a::b:").split(':', pieces);
    ASSERT_EQ(pieces.length(), 2u);
    EXPECT_EQ(pieces[1], "b");
    EXPECT_EQ("x" + MString("y") + 1 + 0.5, "xy10.5");
    EXPECT_EQ(MString("2016").asFloat(), 2016.0f);
    EXPECT_EQ(MString(" -1.5e3 frames").asDouble(), -1500.0);
    EXPECT_EQ(MString("9e99").asInt(), 2147483647);
    EXPECT_TRUE(MString("-12").isInt());
    EXPECT_FALSE(MString("12x").isDouble());
    EXPECT_EQ(MString(static_cast<const char*>(nullptr)), "");
    EXPECT_EQ(MString(L"\u00e4\u20ac").length(), 5u); // two and three bytes of UTF-8
    EXPECT_EQ(MString(L"\u00e4\u20ac").numChars(), 2u);
}

TEST(Strings, tell_numbers_from_words_and_keep_them_in_range) {
    EXPECT_TRUE(MString("32767").isShort());
    EXPECT_FALSE(MString("32768").isShort());
    EXPECT_TRUE(MString("4000000000").isUnsigned());
    EXPECT_FALSE(MString("-1").isUnsigned());
    EXPECT_TRUE(MString("+7").isInt());
    EXPECT_FALSE(MString("+-7").isInt());
    EXPECT_FALSE(MString("").isInt());
    EXPECT_EQ(MString("+-7").asInt(), 0);
    EXPECT_EQ(MString("40000").asShort(), 32767);
    EXPECT_EQ(MString("-3.9").asShort(), -3);
    EXPECT_EQ(MString("4294967295").asUnsigned(), 4294967295u);
    EXPECT_EQ(MString("-5").asUnsigned(), 0u);
}

TEST(Strings, take_numbers_and_letters_of_any_width) {
    MString text;
    text.set(0.1);
    EXPECT_EQ(text, "0.1");
    text.set(2.0 / 3.0, 3);
    EXPECT_EQ(text, "0.667");
    text.set("aZ-\xc3\xa9");
    EXPECT_EQ(text.toUpperCase(), "AZ-\xc3\xa9"); // the letters of ASCII alone
    text.set(static_cast<const char*>(nullptr));
    EXPECT_EQ(text, "");
    EXPECT_EQ(MString("a") += 0.1f, "a0.1"); // no digits beyond those of single precision
    int length = 0;
    EXPECT_EQ(MString("a\0b", 3).asChar(length)[2], 'b');
    EXPECT_EQ(length, 3);
    EXPECT_EQ(MString(L"\U0001F600"), "\xF0\x9F\x98\x80"); // whether wide letters are of two bytes or of four
    std::ostringstream out;
    MStatus missing(MStatus::kNotFound);
    out << MString("x y") << missing;
    EXPECT_EQ(out.str(), "x y(kNotFound): Item not found");
}

TEST(Arrays, stay_safe_past_their_ends) {
    MIntArray list(2, 7);
    list.append(8);
    EXPECT_EQ(list[2], 8);
    list[100] = 5;
    EXPECT_EQ(list[100], 0);
    EXPECT_EQ(list.length(), 3u);
    EXPECT_TRUE(list.insert(1, 0));
    EXPECT_TRUE(list.insert(9, 4));
    EXPECT_EQ(list[4], 9);
    EXPECT_FALSE(list.insert(1, 6));
    EXPECT_FALSE(list.remove(5));
    EXPECT_FALSE(list.set(1, 5));
    EXPECT_TRUE(list.set(6, 4));
    EXPECT_TRUE(list.remove(0));
    EXPECT_EQ(list[3], 6);
    EXPECT_EQ(list.length(), 4u);
}

TEST(Status, is_true_for_success_and_says_why_otherwise) {
    EXPECT_TRUE(MStatus());
    EXPECT_FALSE(MStatus(MStatus::kFailure));
    EXPECT_EQ(static_cast<int>(MStatus::kInvalidParameter), 3);
    EXPECT_EQ(MStatus(MStatus::kFailure).errorString(), "(kFailure): Unexpected Internal Failure");
    const char* const names[] = {"Success",
                                 "(kFailure): ",
                                 "(kInsufficientMemory): ",
                                 "(kInvalidParameter): ",
                                 "(kLicenseFailure): ",
                                 "(kUnknownParameter): ",
                                 "(kNotImplemented): ",
                                 "(kNotFound): ",
                                 "(kEndOfFile): "};
    for (int code = 0; code < 9; ++code) {
        const MString said = MStatus(static_cast<MStatus::MStatusCode>(code)).errorString();
        EXPECT_TRUE(std::string(said.asChar()).starts_with(names[code])) << said;
    }
    testing::internal::CaptureStderr();
    MStatus(MStatus::kFailure).perror(MString("reading"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "reading: (kFailure): Unexpected Internal Failure\n");
}

class Times : public ApiTest {};

TEST_F(Times, count_in_the_scenes_unit_unless_told_otherwise) {
    EXPECT_EQ(MTime().unit(), MTime::kFilm);
    EXPECT_EQ(MTime(48).as(MTime::kSeconds), 2.0);
    EXPECT_EQ(MTime(1, MTime::kSeconds).as(MTime::kNTSCField), 60.0);
    EXPECT_EQ(MTime(0.4).as(MTime::kFilm), 0.4);
    EXPECT_EQ(static_cast<int>(MTime::kFilm), 6);
    EXPECT_EQ(static_cast<int>(MTime::k2FPS), 12);
    MTime::setUIUnit(MTime::k240FPS);
    EXPECT_EQ(scene().time_unit.name, "240fps");
    EXPECT_EQ(MTime().unit(), MTime::k240FPS);
    EXPECT_EQ(MTime(2, MTime::kHours).as(MTime::kMinutes), 120.0);
    EXPECT_EQ(MTime(1, MTime::k6000FPS).as(MTime::kMilliseconds), 1.0 / 6);
    scene().time_unit = *headless::TimeUnit::by_name("29.97fps");
    EXPECT_EQ(MTime::uiUnit(), MTime::kUserDef);
    EXPECT_NEAR(MTime(30000, MTime::kUserDef).as(MTime::kSeconds), 1001.0, 1e-9);
    EXPECT_TRUE(MTime(1, MTime::kSeconds) == MTime(24, MTime::kFilm));
    EXPECT_TRUE(MTime(1, MTime::kSeconds) > MTime(23, MTime::kFilm));
}

TEST_F(Times, take_only_units_there_are) {
    MTime time(2.0, MTime::kSeconds);
    EXPECT_FALSE(time.setUnit(MTime::kInvalid));
    EXPECT_FALSE(time.setUnit(MTime::kLast));
    ASSERT_TRUE(time.setUnit(MTime::kPALFrame)); // the number stays
    EXPECT_EQ(time.as(MTime::kSeconds), 0.08);
    std::ostringstream out;
    out << time;
    EXPECT_EQ(out.str(), "2");
}

class Units : public ApiTest {};

TEST_F(Units, of_angles_and_lengths_convert_by_their_sizes) {
    // What one of each is, in degrees and in centimetres.
    const std::pair<MAngle::Unit, double> angles[] = {{MAngle::kRadians, 180 / std::numbers::pi},
                                                      {MAngle::kDegrees, 1},
                                                      {MAngle::kAngMinutes, 1.0 / 60},
                                                      {MAngle::kAngSeconds, 1.0 / 3600}};
    for (const auto& [unit, degrees] : angles) {
        ASSERT_TRUE(MAngle::setUIUnit(unit));
        EXPECT_EQ(MAngle::uiUnit(), unit);
        EXPECT_NEAR(scene().angle_unit.radians, degrees * std::numbers::pi / 180, 1e-15);
        MAngle angle;
        EXPECT_EQ(angle.unit(), unit);
        ASSERT_TRUE(angle.setValue(7200));
        EXPECT_NEAR(angle.asDegrees(), 7200 * degrees, 1e-9);
        EXPECT_NEAR(MAngle(degrees, MAngle::kDegrees).as(unit), 1.0, 1e-12);
    }
    const std::pair<MDistance::Unit, double> lengths[] = {{MDistance::kInches, 2.54},     {MDistance::kFeet, 30.48},
                                                          {MDistance::kYards, 91.44},     {MDistance::kMiles, 160934.4},
                                                          {MDistance::kMillimeters, 0.1}, {MDistance::kCentimeters, 1},
                                                          {MDistance::kKilometers, 1e5},  {MDistance::kMeters, 100}};
    for (const auto& [unit, centimetres] : lengths) {
        ASSERT_TRUE(MDistance::setUIUnit(unit));
        EXPECT_EQ(MDistance::uiUnit(), unit);
        EXPECT_EQ(scene().linear_unit.centimetres, centimetres);
        MDistance length;
        ASSERT_TRUE(length.setValue(3));
        EXPECT_DOUBLE_EQ(length.asCentimeters(), 3 * centimetres);
        EXPECT_DOUBLE_EQ(MDistance(1, MDistance::kMeters).as(unit), 100 / centimetres);
    }
}

TEST_F(Units, that_are_none_are_refused_and_change_nothing) {
    MAngle angle(90, MAngle::kDegrees);
    MDistance length(1, MDistance::kFeet);
    for (const MAngle::Unit none : {MAngle::kInvalid, MAngle::kLast}) {
        EXPECT_EQ(angle.setUnit(none), MStatus::kInvalidParameter);
        EXPECT_EQ(MAngle::setUIUnit(none), MStatus::kInvalidParameter);
    }
    for (const MDistance::Unit none : {MDistance::kInvalid, MDistance::kLast}) {
        EXPECT_EQ(length.setUnit(none), MStatus::kInvalidParameter);
        EXPECT_EQ(MDistance::setUIUnit(none), MStatus::kInvalidParameter);
    }
    EXPECT_EQ(MAngle::uiUnit(), MAngle::kDegrees);
    EXPECT_EQ(MDistance::uiUnit(), MDistance::kCentimeters);
    ASSERT_TRUE(angle.setUnit(MAngle::kAngMinutes)); // the number stays
    EXPECT_DOUBLE_EQ(angle.asDegrees(), 1.5);
    ASSERT_TRUE(length.setUnit(MDistance::kInches));
    EXPECT_EQ(length.asCentimeters(), 2.54);
}

} // namespace
