#include "tests/headless/animation/network.h"

namespace headless {
namespace {

class ExpressionTest : public Network {
protected:
    void SetUp() override {
        make("expression", "e");
        make("transform", "moved");
        connect("time1.o", "e.tim");
    }
    void tell(const std::string& text) { set("e.ixp", text.c_str()); }
    std::string shortfall() {
        Node* moved = *scene.find_node("moved");
        const std::vector<Unevaluated> found = find_unevaluated(scene, std::span(&moved, 1));
        return found.empty() ? "" : found[0].why;
    }
};

// At frame 40 of 24 a second, with 3, -0.5 and 8 for inputs.
TEST_F(ExpressionTest, what_is_told_follows_from_inputs_and_clock) {
    connect("e.out[0]", "moved.tx");
    scene.set_current_time(40.0 / 24);
    set("e.in[0]", 3.0);
    set("e.in[1]", -.5);
    set("e.in[7]", 8.0);
    const struct {
        const char* text;
        double output;
    } cases[] = {
        {".O[0] = ((frame-1)%31) + 1", 9},
        {".O[0]=time *30", 50},
        {".O[0] = frame == 40", 1},
        {".O[0]=(linstep(0,6,.I[0])*-.I[1] \n+linstep(0,1,.I[7])*.I[0])\n*.I[7];", 26},
        {"float $from = .I[0];\n\n.O[0] = 0;\nif( frame >= $from && frame < $from + 38) {\n\t.O[0] = 1000;\n}", 1000},
        {"if (.I[0] < 3) .O[0] = 1; else if (.I[0] == 3) { .O[0] = .5; .O[0] += 7 / 2; } else .O[0] = 2; // done", 3.5},
        {"$sum = 0; for ($i = 1; $i <= 4; $i++) { if ($i == 2) continue; $sum += $i; } .O[0] = $sum;", 8},
        {".O[0] = .I[1] > 0 ? 1 : .I[1] < -1 ? 2 : 4;", 4},
        {".O[1] = .O[0] = 6; .O[0] = .O[1] / 4;", 1.5},
        {"if (.I[0] > 2) { .O[0] = 1; return; } .O[0] = 2;", 1},
        {".O[0] = min(.I[7], 6) + max(1, 2) * 10 + clamp(0, 1, .I[1]) + abs(-3) / 2", 27},
        {".O[0] = floor(-1.5) + ceil(1.2) * 10 + trunc(-2.7) * 100 + sign(-4) * 1000", -1182},
        {".O[0] = sqrt(16) + pow(2, 5) + hypot(3, 4) + fmod(7, 4) + log10(1000) + log(exp(2))", 49},
        {".O[0] = sin(0) + cos(0) + sind(30) + cosd(60) + tand(45) + deg_to_rad(rad_to_deg(2))", 5},
        {".O[0] = asind(1) + acosd(0) + atand(1) + atan2d(1, 1) + atan2(0, 1) + acos(1) + asin(0) + tan(atan(2))", 272},
        {".O[0] = smoothstep(0, 4, 1) + hermite(1, 3, 0, 0, .5) + hermite(0, 0, 8, 0, .5) + `cosd 60`", .15625 + 3.5},
    };
    for (const auto& [text, output] : cases) {
        tell(text);
        EXPECT_NEAR(number("moved.tx"), output, 1e-9) << text;
        EXPECT_EQ(shortfall(), "") << text;
    }
    EXPECT_TRUE(scene.take_evaluation_errors().empty());
    tell(".O[0] = frame");
    scene.set_current_time(7 * (1.0 / 24));
    EXPECT_EQ(number("moved.tx"), 7) << "another step of time, another run; a frame that rounding leaves beside 7 is 7";
}

TEST_F(ExpressionTest, what_does_not_follow_from_them_is_named) {
    connect("e.out[0]", "moved.tx");
    const struct {
        const char *text, *why;
    } cases[] = {
        {"setAttr \"moved.ty\" 3; .O[0] = 1", "it calls 'setAttr'"},
        {".O[0] = 0.25 + noise(time) / 10;", "it calls 'noise'"},
        {".O[0] = `getAttr moved.ty`", "it calls 'getAttr'"},
        {".O[0] = moved.ty", "its text isn't understood: line 1:9: Syntax error: a value is missing at 'm'"},
        {"vector $v = <<1, 2, 3>>; .O[0] = 1",
         "its text isn't understood: line 1:13: Syntax error: a value is missing at '<'"},
        {"global float $shared; .O[0] = $shared", "it shares '$shared' with scripts"},
        {"proc float f() { return 1; } .O[0] = f()", "it has procedures of its own"},
        {".O[0] = .O[0] + 1", "it goes on from what its output '.O[0]' was before"},
        {".O[0] += 1", "it goes on from what its output '.O[0]' was before"},
        {"if (frame > 3) $x = 2; .O[0] = $x", "it reads '$x' before that has a value"},
        {"if (frame > 3) .O[0] = 2;", "it doesn't always set its output 0"},
        {"if (frame > 3) return; .O[0] = 2;", "it doesn't always set its output 0"},
        {"while (frame < .I[0]) { .O[0] = 2; break; }", "it doesn't always set its output 0"},
        {"$x = frame > 3 && (.O[0] = 1)", "it doesn't always set its output 0"},
        {".O[1] = 1", "it doesn't always set its output 0"},
        {".O[0] = .I[99999999]", "it has no input or output '.I[99999999]'"},
        {".I[0] = 1; .O[0] = 2", "it sets '.I[0]', which is no output"},
        {".O[0] = 1; while (1) ;", "it takes too much work"},
    };
    for (const auto& [text, why] : cases) {
        tell(text);
        const std::string found = shortfall();
        EXPECT_TRUE(found.starts_with(why)) << text << "\n" << found;
    }
}

TEST_F(ExpressionTest, what_fails_says_so_once_and_ends) {
    for (const auto& [text, error] :
         {std::pair{".O[0] = 1 / .I[0];", "Expression 'e': Division by zero"},
          {".O[0] = sqrt(-1);", "Expression 'e': sqrt has no value there"},
          {"$a[20000] = 1; while (1) $a[0] = 1;", "Expression 'e': The script takes too much time or memory"}}) {
        tell(text);
        scene.take_evaluation_errors();
        for (int step = 0; step < 50; ++step) {
            scene.set_current_time(step);
            EXPECT_EQ(number("e.out[0]"), 0);
            EXPECT_EQ(number("e.out[1]"), 0);
        }
        EXPECT_EQ(scene.take_evaluation_errors(), std::vector<std::string>{error});
    }
    // What goes round through both of its outputs ends too, with a line.
    tell(".O[0] = .I[0] + 1; .O[1] = .I[1] + 1;");
    connect("e.out[0]", "e.in[1]");
    connect("e.out[1]", "e.in[0]");
    number("e.out[0]");
    EXPECT_EQ(scene.take_evaluation_errors().size(), 1U);
}

} // namespace
} // namespace headless
