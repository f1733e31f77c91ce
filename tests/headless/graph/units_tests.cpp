#include "headless/graph/units.h"

#include <gtest/gtest.h>

namespace headless {
namespace {

TEST(Units, times_go_by_the_names_that_scripts_use) {
    const std::pair<const char*, double> cases[] = {{"hour", 1 / 3600.0}, {"min", 1 / 60.0},
                                                    {"sec", 1},           {"millisec", 1000},
                                                    {"game", 15},         {"film", 24},
                                                    {"pal", 25},          {"ntsc", 30},
                                                    {"show", 48},         {"palf", 50},
                                                    {"ntscf", 60},        {"120fps", 120},
                                                    {"2fps", 2},          {"23.976fps", 24000 / 1001.0},
                                                    {"12.5fps", 12.5}};
    for (const auto& [name, rate] : cases) {
        const auto unit = TimeUnit::by_name(name);
        ASSERT_TRUE(unit) << name;
        EXPECT_DOUBLE_EQ(unit->per_second, rate) << name;
        EXPECT_EQ(unit->name, name);
    }
    EXPECT_EQ(TimeUnit::by_name("24fps")->name, "film");
    EXPECT_EQ(TimeUnit::by_name("millisecond")->name, "millisec");
    for (const char* bad : {"", "fps", "0fps", "-5fps", "nanfps", "1e400fps", "frames", "24 fps"})
        EXPECT_FALSE(TimeUnit::by_name(bad)) << bad;
}

TEST(Units, lengths_and_angles_go_by_short_and_long_names) {
    EXPECT_EQ(LinearUnit::by_name("meter")->centimetres, 100.0);
    EXPECT_EQ(LinearUnit::by_name("in")->centimetres, 2.54);
    EXPECT_FALSE(LinearUnit::by_name("parsec"));
    EXPECT_EQ(AngleUnit::by_name("radian")->radians, 1.0);
    EXPECT_DOUBLE_EQ(AngleUnit::by_name("deg")->radians * 180, std::numbers::pi);
    EXPECT_FALSE(AngleUnit::by_name("turn"));
}

} // namespace
} // namespace headless
