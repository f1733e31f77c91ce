#include "tests/tools/tool_test.h"

namespace tool_test {
namespace {

using namespace VOR2_LOADER;

class ViewTest : public ToolTest {
protected:
    ViewTest() { save(two_nodes(), "walk.vr2"); }
};

TEST_F(ViewTest, page_lies_beside_the_scene_and_takes_the_place_of_none) {
    EXPECT_EQ(run({"view", path("walk.vr2")}).exit_code, 0);
    const std::string page = read("walk.html");
    EXPECT_EQ(page.find("<!doctype html>"), 0U);
    EXPECT_EQ(page.substr(page.size() - 8), "</html>\n");
    EXPECT_NE(page.find("<title>walk.vr2</title>"), std::string::npos);
    EXPECT_EQ(run({"view", path("walk.vr2"), "-o", path("walk.vr2")}).exit_code, 2);
    expect_refused({"view", path("walk.vr2"), "-o", path("no folder/walk.html")}, path("no folder/walk.html"), "");
    expect_refused({"view", path("walk.vr2"), "--compare", path("none.vr2")}, path("none.vr2"), "");
    expect_refused({"plot", path("walk.vr2"), "--node", "hip"}, path("walk.vr2"), "no node called hip");
    EXPECT_EQ(listing(), (std::vector<std::string>{"walk.html", "walk.vr2"}));
}

TEST_F(ViewTest, terminal_shows_joints_where_they_stand_with_their_names) {
    const Outcome drawn = run({"view", path("walk.vr2"), "--terminal", "--ascii", "--time", "1"});
    EXPECT_EQ(drawn.exit_code, 0);
    EXPECT_NE(drawn.out.find(" at 1 s, 2 nodes\n"), std::string::npos);
    EXPECT_NE(drawn.out.find("hips"), std::string::npos);
    // Behind the line that names the file.
    for (const char c : drawn.out.substr(drawn.out.find('\n'))) EXPECT_GE(c, 0);
    EXPECT_EQ(run({"view", path("walk.vr2"), "--terminal", "-o", path("a.html")}).exit_code, 2);
}

TEST_F(ViewTest, plot_draws_lines_through_the_keys_and_what_differs_in_dashes) {
    // Hips move from 0 to 4 m in x between 0 and 2 s: the line of x goes from the lane's foot to half of its height.
    const Outcome drawn = run({"plot", path("walk.vr2"), "--node", "root|hips", "--start", "0", "--end", "2"});
    EXPECT_EQ(drawn.exit_code, 0);
    EXPECT_NE(drawn.out.find("hips position (m)"), std::string::npos);
    EXPECT_NE(drawn.out.find("<path class=\"c0\" d=\"M64.00 150.00"), std::string::npos);
    EXPECT_NE(drawn.out.find("L884.00 108.00\"/>"), std::string::npos);

    VOR2 moved = two_nodes();
    moved.matrix_hierarchy.nodes[1].position_track->add({0.25F, 0, 0});
    moved.matrix_hierarchy.nodes[1].name = TEXT(u"hips");
    save(moved, "moved.vr2");
    const Outcome both = run({"plot", path("walk.vr2"), path("moved.vr2")});
    EXPECT_NE(both.out.find("Worst: hips, 0.25"), std::string::npos) << both.out;
    EXPECT_NE(both.out.find("class=\"c0 other\""), std::string::npos);
    EXPECT_EQ(both.out.find("hips rotation"), std::string::npos);
    const Outcome same = run({"plot", path("walk.vr2"), path("walk.vr2")});
    EXPECT_NE(same.out.find("All joints stand in the same places"), std::string::npos);
}

} // namespace
} // namespace tool_test
