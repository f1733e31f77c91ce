#include "tests/headless/api/api_test.h"

#include "headless/script/interpreter.h"

#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MDoubleArray.h>
#include <maya/MFileIO.h>
#include <maya/MFileObject.h>
#include <maya/MIntArray.h>
#include <maya/MStringArray.h>

#include <filesystem>
#include <limits>
#include <string>

namespace {

class Globals : public ApiTest {
protected:
    // What a test puts in their place doesn't outlive it.
    ~Globals() override { headless::install_interpreters(session); }
    Names selected() {
        MSelectionList list;
        MGlobal::getActiveSelectionList(list);
        return names(list);
    }
};

TEST_F(Globals, select_by_name_adjusts_in_the_hosts_five_ways) {
    for (const char* name : {"a", "b", "c"}) make("joint", name);
    EXPECT_TRUE(MGlobal::selectByName("b"));
    EXPECT_TRUE(MGlobal::selectByName("a", MGlobal::kAddToList));
    EXPECT_EQ(selected(), (Names{"|b", "|a"}));
    EXPECT_FALSE(MGlobal::selectByName("nobody", MGlobal::kReplaceList));
    EXPECT_EQ(selected(), (Names{"|b", "|a"}));
    MGlobal::selectByName("c", MGlobal::kAddToHeadOfList);
    EXPECT_EQ(selected(), (Names{"|c", "|b", "|a"}));
    MGlobal::selectByName("b", MGlobal::kXORWithList);
    MGlobal::selectByName("a", MGlobal::kRemoveFromList);
    EXPECT_EQ(selected(), (Names{"|c"}));
    MGlobal::selectByName("time1", MGlobal::kReplaceList);
    EXPECT_EQ(selected(), (Names{"time1"}));
    MGlobal::clearSelectionList();
    EXPECT_TRUE(selected().empty());
    MGlobal::selectByName("?");
    EXPECT_EQ(selected(), (Names{"|a", "|b", "|c"}));
}

TEST_F(Globals, the_clock_and_the_ranges_count_in_the_scenes_unit) {
    EXPECT_EQ(MAnimControl::minTime().value(), 1.0);
    EXPECT_EQ(MAnimControl::maxTime().value(), 24.0);
    EXPECT_EQ(MAnimControl::animationEndTime().value(), 48.0);
    MGlobal::viewFrame(30.0);
    EXPECT_EQ(scene().current_time(), 1.25);
    MAnimControl::setCurrentTime(MTime(2, MTime::kSeconds));
    EXPECT_EQ(MAnimControl::currentTime().value(), 48.0);
    MTime::setUIUnit(MTime::kNTSCFrame);
    EXPECT_EQ(MAnimControl::currentTime().value(), 60.0);
    EXPECT_EQ(MAnimControl::maxTime().unit(), MTime::kNTSCFrame);
    EXPECT_EQ(MAnimControl::maxTime().value(), 30.0);
    MAnimControl::setMinMaxTime(MTime(15, MTime::kNTSCFrame), MTime(1.5, MTime::kSeconds));
    EXPECT_EQ(MAnimControl::minTime().value(), 15.0);
    EXPECT_EQ(MAnimControl::maxTime().value(), 45.0);
    const MTime never(std::numeric_limits<double>::quiet_NaN());
    EXPECT_FALSE(MAnimControl::setCurrentTime(never));
    EXPECT_FALSE(MAnimControl::setMinTime(never));
    EXPECT_EQ(MAnimControl::minTime().value(), 15.0);
}

TEST_F(Globals, lines_go_to_the_interpreters_and_errors_become_messages) {
    session.set_mel([](headless::Session&, const std::string& line) -> headless::Result<headless::CommandResult> {
        if (line == "bad") return headless::Error{"no such line", "", 1, 2};
        headless::CommandResult out;
        out.kind = headless::CommandResult::Kind::numbers;
        out.numbers = {1.5, 2};
        return out;
    });
    EXPECT_EQ(MGlobal::executeCommandStringResult("good"), "1.5 2");
    MStringArray pieces;
    EXPECT_TRUE(MGlobal::executeCommand("good", pieces));
    EXPECT_EQ(pieces.length(), 2u);
    EXPECT_TRUE(messages.empty());
    MGlobal::executeCommand("good", true);
    EXPECT_EQ(messages, (Names{"I: good", "R: 1.5 2"}));
    MStatus status;
    EXPECT_EQ(MGlobal::executeCommandStringResult("bad", false, false, &status), "");
    EXPECT_FALSE(status);
    EXPECT_EQ(messages.back(), "E: line 1:2: no such line");
    session.set_mel(nullptr);
    EXPECT_FALSE(MGlobal::executeCommand("good"));
}

TEST_F(Globals, what_is_there_only_to_be_asked_answers) {
    EXPECT_EQ(MGlobal::mayaVersion().asFloat(), 2016.0f);
    EXPECT_EQ(M3dView::applicationShell(), MNativeWindowHdl());
    EXPECT_EQ(MFileIO::currentFile(), "");
    EXPECT_FALSE(MFileIO::save());
    EXPECT_FALSE(MFileIO::open("/nowhere/at.all"));
    EXPECT_FALSE(MFileIO::saveAs("/nowhere/at.all"));
    EXPECT_EQ(MGlobal::apiVersion() / 100, 2016);
    EXPECT_EQ(MGlobal::mayaState(), MGlobal::kBatch);
    EXPECT_TRUE(MGlobal::isYAxisUp());
    EXPECT_FALSE(MGlobal::isZAxisUp());
}

TEST(FileObjects, give_names_with_forward_slashes) {
    MFileObject file;
    file.setRawFullName("\\some\\dir/x y.vr2");
    const std::string drive = std::filesystem::current_path().root_name().string(); // empty but on Windows
    EXPECT_EQ(file.fullName(), (drive + "/some/dir/x y.vr2").c_str());
    EXPECT_EQ(file.name(), "x y.vr2");
    EXPECT_EQ(file.path(), (drive + "/some/dir/").c_str());
    file.setRawFullName("bare.ma");
    EXPECT_TRUE(std::string(file.fullName().asChar()).starts_with(drive + "/"));
    EXPECT_GT(file.fullName().length(), MString("bare.ma").length());
    EXPECT_FALSE(file.exists());
    EXPECT_EQ(MFileObject().fullName(), "");
    MFileObject parts;
    parts.setRawPath("\\some\\dir");
    parts.setRawName("x.ma");
    EXPECT_EQ(parts.fullName(), (drive + "/some/dir/x.ma").c_str());
}

TEST_F(Globals, results_of_lines_come_as_the_type_asked_for) {
    session.set_python([](headless::Session&, const std::string& line) -> headless::Result<headless::CommandResult> {
        if (line == "bad") return headless::Error{"no such line"};
        headless::CommandResult out;
        out.kind = headless::CommandResult::Kind::text;
        out.texts = {"said " + line};
        return out;
    });
    session.set_mel([](headless::Session&, const std::string& line) -> headless::Result<headless::CommandResult> {
        headless::CommandResult out;
        out.kind = headless::CommandResult::Kind::numbers;
        if (line == "one") out.numbers = std::vector{7.25};
        if (line == "many") out.numbers = std::vector{-1.5, 2.75, 3.0};
        return out;
    });
    int whole = 0;
    double number = 0;
    MIntArray wholes(1, 9);
    MDoubleArray numbers(1, 9.0);
    EXPECT_TRUE(MGlobal::executeCommand("one", whole));
    EXPECT_TRUE(MGlobal::executeCommand("one", number));
    EXPECT_TRUE(MGlobal::executeCommand("many", wholes));
    EXPECT_TRUE(MGlobal::executeCommand("many", numbers));
    EXPECT_EQ(whole, 7);
    EXPECT_EQ(number, 7.25);
    ASSERT_EQ(wholes.length(), 3u); // what was there before is gone
    EXPECT_EQ(wholes[0], -1);
    ASSERT_EQ(numbers.length(), 3u);
    EXPECT_EQ(numbers[1], 2.75);
    MString text;
    EXPECT_TRUE(MGlobal::executePythonCommand("x", text));
    EXPECT_EQ(text, "said x");
    EXPECT_EQ(MGlobal::executePythonCommandStringResult("y"), "said y");
    MStatus status;
    EXPECT_EQ(MGlobal::executePythonCommandStringResult("bad", false, false, &status), "");
    EXPECT_FALSE(status);
    EXPECT_EQ(messages, Names{"E: no such line"});
}

TEST_F(Globals, the_whole_range_is_set_at_once) {
    EXPECT_TRUE(MAnimControl::setAnimationStartEndTime(MTime(-1, MTime::kSeconds), MTime(100, MTime::kFilm)));
    EXPECT_EQ(MAnimControl::animationStartTime().value(), -24.0);
    EXPECT_EQ(MAnimControl::animationEndTime().value(), 100.0);
    EXPECT_EQ(MAnimControl::minTime().value(), 1.0); // the played one is another
}

} // namespace
