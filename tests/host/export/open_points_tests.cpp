#include "tests/host/host_test.h"

#include <maya/MAnimControl.h>

#include <filesystem>
#include <limits>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();
constexpr double ENDLESS = std::numeric_limits<double>::infinity();

class REFUSED_EXPORT : public HOST_TEST {
protected:
    REFUSED_EXPORT() {
        std::filesystem::remove(file);
        make("joint", "hips");
        select({"hips"});
        MGlobal::viewFrame(5.0);
    }
    /// One message of the error, no file, and the clock where it was.
    void expect_refused(const std::string& why) {
        messages.clear();
        EXPECT_FALSE(build_and_save(file.c_str()));
        EXPECT_TRUE(messages.back().starts_with("E: " + why)) << messages.back();
        EXPECT_FALSE(std::filesystem::exists(file));
        EXPECT_EQ(MAnimControl::currentTime().as(MTime::uiUnit()), 5.0);
    }
    std::string file = temporary_folder() + "refused_export.vr2";
};

TEST_F(REFUSED_EXPORT, says_what_is_wrong_with_the_range) {
    struct CASE {
        double start, stop, sample_at;
        const char* why;
    };
    const CASE cases[] = {{0, 1, 0, "The sample rate"},
                          {0, 1, -60, "The sample rate"},
                          {0, 1, NOT_A_NUMBER, "The sample rate"},
                          {0, 1, ENDLESS, "The sample rate"},
                          {0, ENDLESS, 60, "The first or last frame"},
                          {NOT_A_NUMBER, 1, 60, "The first or last frame"},
                          {2, 1, 60, "The last frame, 1, lies before the first, 2"},
                          {0, 1, 1e30, "The samples lie closer"},
                          {0, 1e300, 60, "The samples lie closer"},
                          {1e9, 1e9 + 1, 60, "The samples lie closer"},
                          {0, 1, 1e-320, "The samples lie closer"},
                          {-1e5, 1e5, 2000, "The export would hold more keys than a file can: "}};
    for (const char* name : {"knee", "foot", "toe"}) make("joint", name, path_of("hips"));
    for (const CASE& one : cases) {
        export_settings().start_frame = one.start;
        export_settings().stop_frame = one.stop;
        export_settings().sample_at = one.sample_at;
        expect_refused(one.why);
    }
}

TEST_F(REFUSED_EXPORT, takes_a_range_of_one_frame_and_the_slowest_rate) {
    export_settings().start_frame = export_settings().stop_frame = -3;
    export_settings().sample_at = 1e-200;
    EXPECT_EQ(exported().environment.time_range.start, -0.125F);
}

TEST_F(REFUSED_EXPORT, needs_something_with_a_place_in_the_hierarchy) {
    MGlobal::clearSelectionList();
    expect_refused("Nothing to export");
    select({"time1"});
    expect_refused("Nothing to export");
    EXPECT_TRUE(said("W: Not exported, since it has no place in the hierarchy: time1"));
    export_settings().export_node_list.append("nobody");
    expect_refused("Nothing to export");
    EXPECT_TRUE(said("W: Not exported, since the scene holds no such node: nobody"));
    export_settings().export_node_list.append("hips");
    EXPECT_EQ(names(exported()).size(), 2U);
}

TEST_F(REFUSED_EXPORT, doesnt_write_what_isnt_finite) {
    animate(path_of("hips"), "translateX", {0, 1, 1.5}, {0, 1, 1e300});
    expect_refused("The transform of hips isn't finite at 1.00");
}

TEST_F(REFUSED_EXPORT, exports_a_lone_shape_as_nothing_but_the_root) {
    make("locator", "marker");
    select({"markerShape"});
    EXPECT_EQ(names(exported()).size(), 1U);
    EXPECT_TRUE(said("W: What is exported holds no joint and no transform"));
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
