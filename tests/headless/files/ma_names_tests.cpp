#include "headless/files/ma_names.h"

#include <gtest/gtest.h>

namespace headless {
namespace {

// Paths whose first name two nodes have are searched for. Where the steps end amid a search, the first that fits may
// not be the only one.
TEST(MaNames, searches_end_with_their_steps_and_never_at_a_wrong_node) {
    for (std::size_t steps = 0; steps < 12; ++steps) {
        Scene scene;
        const auto make = [&](MaNames& names, const char* name, Node* parent) {
            Node* node = *scene.create_node("transform", name, parent);
            names.add(*node, name);
            return node;
        };
        MaNames names(scene, steps);
        Node *top = make(names, "top", nullptr), *other = make(names, "other", nullptr);
        Node *arm = make(names, "arm", make(names, "g", top)), *twin = make(names, "arm", make(names, "g", other));
        Node *hand = make(names, "hand", arm), *foot = make(names, "foot", arm);
        make(names, "hand", twin);
        make(names, "foot", make(names, "leg", twin));
        std::size_t found = 0;
        for (int i = 0; i < 8; ++i) found += names.find("arm|foot", {}) == foot;
        EXPECT_EQ(found, (std::max<std::size_t>(steps, 1) - 1) / 2); // two names looked at for each, and one left
        EXPECT_EQ(names.find("top|g|arm|hand", {}), hand) << "followed, not searched";
        MaNames others(scene, steps);
        for (Node* node : scene.nodes()) others.add(*node, node->name());
        EXPECT_FALSE(others.find("g|arm|hand", {})) << "both fit";
    }
}

} // namespace
} // namespace headless
