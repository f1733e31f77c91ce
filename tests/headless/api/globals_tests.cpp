#include "tests/headless/api/api_test.h"

#include <maya/M3dView.h>
#include <maya/MAnimControl.h>
#include <maya/MFileIO.h>
#include <maya/MFileObject.h>
#include <maya/MStringArray.h>

#include <filesystem>
#include <limits>
#include <string>

namespace {

class Globals : public ApiTest {
protected:
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
    EXPECT_EQ(M3dView::applicationShell(), nullptr);
    EXPECT_EQ(MFileIO::currentFile(), "");
    EXPECT_FALSE(MFileIO::save());
    EXPECT_FALSE(MFileIO::open("/nowhere/at.all"));
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
}

} // namespace
