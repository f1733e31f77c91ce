#pragma once

#include "headless/animation/keying.h"
#include "headless/graph/drivers.h"
#include "headless/graph/scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace headless {

inline constexpr double degree = std::numbers::pi / 180.0;

/// Makes networks of nodes in a few lines; plugs are told as "node.attribute".
class Network : public testing::Test {
protected:
    Node& make(const char* type, const char* name, Node* parent = nullptr) {
        return **scene.create_node(type, name, parent);
    }
    void connect(const std::string& from, const std::string& to) {
        const Result<Plug> source = scene.find_plug(from), destination = scene.find_plug(to);
        ASSERT_TRUE(source && destination) << from << " to " << to;
        const Result<void> done = scene.connect(*source, *destination);
        ASSERT_TRUE(done) << (done ? "" : done.error().message);
    }
    void set(const std::string& plug, const Value& value) {
        const Result<Plug> at = scene.find_plug(plug);
        ASSERT_TRUE(at) << plug;
        ASSERT_TRUE(at->node->set(at->key, value)) << plug;
    }
    /// A linear curve over seconds, connected to a plug.
    void animate(const std::string& plug, std::vector<double> times, std::vector<double> values) {
        ASSERT_TRUE(
            set_keys(scene, *scene.find_plug(plug), KeyTimes(std::move(times)), std::move(values), Tangent::linear));
    }
    double number(const std::string& plug) { return scene.evaluate(*scene.find_plug(plug)).number(); }
    Vector3 vector(const std::string& plug) { return scene.evaluate(*scene.find_plug(plug)).vector(); }
    Matrix world(const char* node) { return scene.world_matrix(**scene.find_node(node)); }

    /// The names of what moves a transform of the scene and isn't evaluated.
    std::vector<std::string> unevaluated() {
        std::vector<Node*> moving;
        for (Node* node : scene.nodes()) {
            if (node->type().is_transform()) moving.push_back(node);
        }
        std::vector<std::string> out;
        for (const Unevaluated& found : find_unevaluated(scene, moving)) out.push_back(found.node->name());
        return out;
    }

    Scene scene;
};

inline void expect_near(const Vector3& a, const Vector3& b, double tolerance = 1e-12) {
    for (int i = 0; i < 3; ++i) EXPECT_NEAR(a[i], b[i], tolerance) << "at " << i;
}

inline void expect_same_rotation(const Matrix& a, const Matrix& b, double tolerance = 1e-12) {
    for (int r = 0; r < 3; ++r) expect_near(a.row(r), b.row(r), tolerance);
}

} // namespace headless
