#include "tests/headless/animation/network.h"

namespace headless {
namespace {

// The base gives 10; over it lie layer "low" with 4 and layer "high" with 100, connected as files have them.
class Layers : public Network {
protected:
    void SetUp() override {
        make("animLayer", "base");
        set("base.ovrd", true);
        make("transform", "moved");
        int place = 0;
        std::string below;
        for (const char* layer : {"low", "high"}) {
            make("animLayer", layer);
            hang(layer, "base", place++);
            const std::string blend = std::string("of_") + layer;
            make("animBlendNodeAdditiveDL", blend.c_str());
            connect(std::string(layer) + ".bgwt", blend + ".wa");
            connect(std::string(layer) + ".fgwt", blend + ".wb");
            if (below.empty())
                set(blend + ".ia", 10.0);
            else
                connect(below + ".o", blend + ".ia");
            below = blend;
        }
        set("of_low.ib", 4.0);
        set("of_high.ib", 100.0);
        connect("of_high.o", "moved.tx");
    }
    void hang(const std::string& layer, const std::string& parent, int place) {
        connect(layer + ".sl", parent + ".chsl[" + std::to_string(place) + "]");
        connect(layer + ".play", parent + ".cdly[" + std::to_string(place) + "]");
        connect(parent + ".csol", layer + ".sslo");
        connect(parent + ".fgwt", layer + ".pwth");
        connect(parent + ".omte", layer + ".pmte");
    }
};

TEST_F(Layers, mix_by_weight_mute_solo_and_override) {
    using Settings = std::vector<std::pair<const char*, Value>>;
    const std::pair<Settings, double> cases[] = {
        {{}, 114},
        {{{"low.wgth", .5}}, 112},
        {{{"low.mt", true}}, 110},
        {{{"low.sl", true}}, 14},
        {{{"low.sl", true}, {"low.mt", true}}, 10},
        {{{"low.sl", true}, {"high.sl", true}}, 114},
        {{{"base.wgth", .5}}, 62},
        {{{"high.ovrd", true}}, 100},
        {{{"high.ovrd", true}, {"high.wgth", .25}}, 35.5},
        {{{"high.ovrd", true}, {"high.wgth", .25}, {"high.pthg", false}}, 25},
        {{{"high.ovrd", true}, {"high.mt", true}, {"high.pthg", false}}, 14},
        {{{"low.ovrd", true}, {"low.wgth", .5}}, 107},
    };
    for (const auto& [settings, expected] : cases) {
        std::string told;
        for (const auto& [plug, value] : settings) {
            set(plug, value);
            told += std::string(plug) + " ";
        }
        EXPECT_NEAR(number("moved.tx"), expected, 1e-12) << told;
        for (const auto& [plug, value] : settings) {
            const Plug at = *scene.find_plug(plug);
            at.node->reset(at.key);
        }
    }
    EXPECT_TRUE(unevaluated().empty());
}

TEST_F(Layers, follow_the_layer_that_they_hang_under) {
    for (const char* input : {"high.sslo", "high.pwth", "high.pmte"}) scene.disconnect(*scene.find_plug(input));
    for (const auto& [from, to] :
         {std::pair{"low.csol", "high.sslo"}, {"low.fgwt", "high.pwth"}, {"low.omte", "high.pmte"}})
        connect(from, to);
    set("low.wgth", .5);
    EXPECT_EQ(number("moved.tx"), 62);
    set("low.mt", true);
    EXPECT_EQ(number("moved.tx"), 10);
    EXPECT_TRUE(scene.take_evaluation_errors().empty());
    set("low.mt", false);
    scene.disconnect(*scene.find_plug("low.pwth"));
    connect("high.fgwt", "low.pwth");
    number("moved.tx");
    EXPECT_EQ(scene.take_evaluation_errors().size(), 1U) << "a layer under itself";
}

// Quarter turns about x below and about y above: added up by component, and by layer with the layer's own turn within
// the axes of what lies below, x to y to z, in any order of the angles.
TEST_F(Layers, turn_by_component_or_by_layer) {
    make("animBlendNodeAdditiveRotation", "r");
    make("transform", "turned");
    connect("r.o", "turned.r");
    set("r.ia", Vector3{90 * degree, 0, 0});
    set("r.ib", Vector3{0, 90 * degree, 0});
    set("r.wb", 1. / 3);
    expect_near(vector("r.o"), {90 * degree, 30 * degree, 0});
    for (const char* input : {"r.wa", "r.wb"}) set(input, 1.0);
    connect("low.oram", "r.acm");
    set("low.ram", 1);
    Matrix expected;
    expected.set_row(0, {0, 1, 0});
    expected.set_row(1, {0, 0, 1});
    expected.set_row(2, {1, 0, 0});
    for (int order = 0; order < 6; ++order) {
        set("r.ro", order);
        set("turned.ro", order);
        expect_same_rotation(world("turned"), expected);
    }
    // A layer that overrides goes from the one turn to the other along the arc.
    set("low.ovrd", true);
    set("r.ia", Vector3{0, 0, 170 * degree});
    set("r.ib", Vector3{0, 0, -170 * degree});
    for (const auto& [below, own, angle] : {std::tuple{1.0, 0.0, 170.0}, {.75, .25, 175.0}, {0.0, .3, 190.0}}) {
        set("r.wa", below);
        set("r.wb", own);
        expect_same_rotation(world("turned"), euler_to_matrix({0, 0, angle * degree}, RotateOrder::xyz));
    }
    EXPECT_TRUE(unevaluated().empty());
    set("r.ri", 1);
    EXPECT_EQ(unevaluated(), std::vector<std::string>{"r"});
}

TEST_F(Layers, add_or_multiply_scales_and_choose_what_does_not_mix) {
    make("animBlendNodeAdditiveScale", "s");
    for (const auto& [plug, value] : {std::pair{"s.ia", 4.0}, {"s.ib", 9.0}, {"s.wb", .5}}) set(plug, value);
    EXPECT_EQ(number("s.o"), 8.5);
    connect("low.sam", "s.acm");
    EXPECT_NEAR(number("s.o"), 12, 1e-12) << "layers multiply unless told otherwise";
    set("s.ia", -4.0);
    set("s.wa", .5);
    EXPECT_NEAR(number("s.o"), -6, 1e-12);
    for (const char* kind : {"animBlendNodeBoolean", "animBlendNodeEnum"}) {
        const std::string name = (*scene.create_node(kind))->name();
        set(name + ".ia", 1);
        for (const auto& [weight, expected] : {std::pair{0.0, 1.0}, {.25, 0.0}, {1.0, 0.0}}) {
            set(name + ".wb", weight);
            EXPECT_EQ(number(name + ".o"), expected) << kind << " " << weight;
        }
    }
}

} // namespace
} // namespace headless
