// Exports and imports one after the other in one process: what one leaves behind must not show in the next.

#include "tests/host/host_test.h"

#include "host/export/mesh_export.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace VOR2_EXPORTER_MAYA {
namespace {

class REPETITION : public HOST_TEST {
protected:
    REPETITION() {
        platform::fixed_time = platform::UTC_TIME{2016, 3, 2, 4, 5, 6};
        platform::fixed_account_name = "tester";
        mesh_options().meshes = true;
    }
    ~REPETITION() override {
        mesh_options().meshes = false;
        std::error_code ignored;
        std::filesystem::remove(file, ignored);
    }
    std::string exported_bytes(const std::string& flags) {
        EXPECT_TRUE(session.run_mel("select -r hips; VOR2Export -f \"" + file + "\" -st 0 -end 24 " + flags));
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    std::string walk() {
        session.new_scene();
        const MDagPath hips = at("joint", "hips", {1, 2, 3});
        const MDagPath knee = at("joint", "knee", {0, 4, 0}, hips);
        animate(hips, "translateX", {0, 0.5, 1}, {0, 10, 0});
        animate(knee, "rotateZ", {0, 1}, {0, 1});
        return exported_bytes("-sAt 30");
    }
    std::string box(const std::string& shader) {
        session.new_scene();
        EXPECT_TRUE(
            session.run_mel("createNode transform -n hips; createNode mesh -n m -p hips; createNode polyCube -n c; "
                            "connectAttr c.out m.i; createNode lambert -n " +
                            shader + "; createNode shadingEngine -n g; connectAttr " + shader +
                            ".outColor g.ss; connectAttr m.iog g.dsm[0];"));
        return exported_bytes("-rot false");
    }
    std::string there_and_back() {
        static_cast<void>(walk());
        session.new_scene();
        EXPECT_TRUE(session.run_mel("VOR2Import -f \"" + file + "\""));
        return exported_bytes("-uno knee");
    }

    const std::string file = temporary_folder() + "repetition tests.vr2";
};

TEST_F(REPETITION, gives_the_same_bytes_after_whatever_came_before) {
    const std::string walk_alone = walk();
    const std::string back_alone = there_and_back();
    const std::string box_alone = box("red");
    ASSERT_GT(walk_alone.size(), 300U);
    EXPECT_NE(back_alone, walk_alone);
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(box("red"), box_alone);
        EXPECT_EQ(walk(), walk_alone);
        EXPECT_EQ(box("blue").size(), box_alone.size() + 2) << "only the longer name tells them apart";
        EXPECT_FALSE(session.run_mel("VOR2Export -sAt none"));
        EXPECT_EQ(there_and_back(), back_alone);
        // One that fails and one that finds nothing.
        EXPECT_TRUE(session.run_mel("VOR2Import -f \"/nowhere/x.vr2\"; select -cl; VOR2Export -f \"/nowhere/x.vr2\""));
        EXPECT_EQ(walk(), walk_alone);
    }
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
