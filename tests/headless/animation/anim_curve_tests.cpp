#include "headless/animation/anim_curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace headless {
namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

AnimCurve curve_of_keys(const std::vector<std::pair<double, double>>& keys, Tangent tangent) {
    AnimCurve curve;
    for (const auto& [time, value] : keys) curve.append(time, value);
    curve.set_tangent(tangent);
    return curve;
}

// The cubic through both ends in Hermite's own basis.
double hermite(double u, double run, double v0, double v1, double m0, double m1) {
    const double u2 = u * u, u3 = u2 * u;
    return (2 * u3 - 3 * u2 + 1) * v0 + (u3 - 2 * u2 + u) * run * m0 + (3 * u2 - 2 * u3) * v1 + (u3 - u2) * run * m1;
}

void expect_slopes(const AnimCurve& curve, const std::vector<std::pair<double, double>>& in_and_out) {
    for (std::size_t i = 0; i + 1 < curve.size(); ++i) {
        const double t0 = curve.times()[i], run = curve.times()[i + 1] - t0;
        for (int step = 0; step <= 40; ++step) {
            const double u = step / 40.0;
            const double wanted = hermite(u, run, curve.values()[i], curve.values()[i + 1], in_and_out[i].second,
                                          in_and_out[i + 1].first);
            EXPECT_NEAR(curve.evaluate(t0 + u * run), wanted, 1e-12) << "stretch " << i << " at " << u;
        }
    }
}

// Rises of 2 over 1, 1 over 2, 0 over 1, -4 over 2: the mean slopes are 2, 0.5, 0 and -2.
const std::vector<std::pair<double, double>> hill = {{0, 1}, {1, 3}, {3, 4}, {4, 4}, {6, 0}};

TEST(AnimCurve, slopes_follow_from_each_tangent_type) {
    struct Case {
        Tangent type;
        std::vector<std::pair<double, double>> slopes; // in and out, key by key
    };
    const Case cases[] = {
        {Tangent::linear, {{2, 2}, {2, .5}, {.5, 0}, {0, -2}, {-2, -2}}},
        {Tangent::flat, {{0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}}},
        {Tangent::slow, {{0, 0}, {0, 0}, {0, 0}, {0, 0}, {0, 0}}},
        {Tangent::fast, {{4, 4}, {4, 1}, {1, 0}, {0, -4}, {-4, -4}}},
        {Tangent::spline, {{2, 2}, {1, 1}, {1. / 3, 1. / 3}, {-4. / 3, -4. / 3}, {-2, -2}}},
        {Tangent::clamped, {{2, 2}, {1, 1}, {0, 0}, {0, 0}, {-2, -2}}},
        {Tangent::plateau, {{0, 0}, {1, 1}, {0, 0}, {0, 0}, {0, 0}}},
        {Tangent::automatic, {{0, 0}, {1, 1}, {0, 0}, {0, 0}, {0, 0}}},
        {Tangent{8}, {{2, 2}, {1, 1}, {1. / 3, 1. / 3}, {-4. / 3, -4. / 3}, {-2, -2}}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(static_cast<int>(each.type));
        expect_slopes(curve_of_keys(hill, each.type), each.slopes);
    }
}

TEST(AnimCurve, auto_is_bounded_by_the_gentler_neighbour) {
    // The line from neighbour to neighbour rises 10.1 in 2; the gentler side 0.1 in 1 bounds that to 0.3.
    const AnimCurve curve = curve_of_keys({{0, 0}, {1, .1}, {2, 10.1}}, Tangent::automatic);
    expect_slopes(curve, {{0, 0}, {.3, .3}, {0, 0}});
    for (double t = 0; t < 1; t += .01) EXPECT_LE(curve.evaluate(t), .1 + 1e-15);
}

TEST(AnimCurve, each_side_of_a_key_has_its_own_type) {
    AnimCurve curve = curve_of_keys(hill, Tangent::flat);
    curve.set_types(1, Tangent::linear, Tangent::by_default);
    curve.set_types(2, Tangent::fixed, Tangent::fixed);
    CurveKey key = curve.key(2);
    key.in_vector = {.6, .8};
    key.out_vector = {2, -1};
    curve.set_key(2, key);
    expect_slopes(curve, {{0, 0}, {2, 0}, {.8 / .6, -.5}, {0, 0}, {0, 0}});
    for (const TangentVector upright : {TangentVector{0, 1}, {-3, 2}, {1e-9, 1}, {not_a_number, 1}}) {
        key.out_vector = upright;
        curve.set_key(2, key);
        EXPECT_EQ(curve.out_slope(2), AnimCurve::max_slope);
    }
}

TEST(AnimCurve, step_holds_and_stepnext_jumps) {
    AnimCurve curve = curve_of_keys({{0, 1}, {1, 2}, {2, 5}}, Tangent::step);
    for (const auto& [time, value] : {std::pair{0., 1.}, {.999, 1.}, {1., 2.}, {1.999, 2.}, {2., 5.}, {9., 5.}})
        EXPECT_EQ(curve.evaluate(time), value) << time;
    EXPECT_EQ(curve.evaluate(std::nextafter(1.0, 0.0)), 2) << "a rounding before the key is the key";
    curve.set_tangent(Tangent::step_next);
    for (const auto& [time, value] : {std::pair{0., 1.}, {.001, 2.}, {1., 2.}, {1.001, 5.}, {2., 5.}})
        EXPECT_EQ(curve.evaluate(time), value) << time;
    EXPECT_EQ(curve.evaluate(std::nextafter(0.0, 1.0)), 1);
}

double bezier(double u, double p0, double p1, double p2, double p3) {
    const double w = 1 - u;
    return w * w * w * p0 + 3 * w * w * u * p1 + 3 * w * u * u * p2 + u * u * u * p3;
}

TEST(AnimCurve, weighted_curves_follow_the_bezier_of_their_vectors) {
    struct Case {
        TangentVector out, in; // between keys (1, 2) and (3, 7)
        double x1, y1, x2, y2;
    };
    const Case cases[] = {{{2, 5}, {2, 5}, 1 + 2. / 3, 2 + 5. / 3, 3 - 2. / 3, 7 - 5. / 3},
                          {{6, 3}, {6, -3}, 3, 3, 1, 8},
                          {{.3, 9}, {1.2, 0}, 1.1, 5, 2.6, 7},
                          {{12, 3}, {0, 6}, 1 + 8. / 3, 2 + 2. / 3, 3 - 2. / 3, 5},
                          {{-1, 3}, {.006, 0}, 1, 3, 2.998, 7}};
    for (const Case& each : cases) {
        AnimCurve curve = curve_of_keys({{1, 2}, {3, 7}}, Tangent::fixed);
        curve.set_weighted(true);
        CurveKey first = curve.key(0), second = curve.key(1);
        first.out_vector = each.out;
        second.in_vector = each.in;
        curve.set_key(0, first);
        curve.set_key(1, second);
        for (int i = 0; i <= 1000; ++i) {
            const double t = bezier(i / 1000., 1, each.x1, each.x2, 3);
            // Where time stands still a rounding of it is worth more: the neighbours' values bound the value then.
            const double a = bezier(std::max(0., i / 1000. - 1e-5), 2, each.y1, each.y2, 7);
            const double b = bezier(std::min(1., i / 1000. + 1e-5), 2, each.y1, each.y2, 7);
            EXPECT_GE(curve.evaluate(t), std::min(a, b) - 1e-9) << i;
            EXPECT_LE(curve.evaluate(t), std::max(a, b) + 1e-9) << i;
        }
    }
}

TEST(AnimCurve, weighting_changes_nothing_without_vectors) {
    AnimCurve plain = curve_of_keys(hill, Tangent::spline), weighted = plain;
    weighted.set_weighted(true);
    for (double t = 0; t <= 6; t += .013) EXPECT_NEAR(weighted.evaluate(t), plain.evaluate(t), 1e-12);
}

TEST(AnimCurve, infinities_go_on_on_both_sides) {
    const std::vector<std::pair<double, double>> keys = {{2, 10}, {3, 14}, {6, 11}}; // 4 long, rising 1
    const AnimCurve inside = curve_of_keys(keys, Tangent::linear);
    const auto at = [&](double t) { return inside.evaluate(t); };
    struct Case {
        Infinity how;
        std::function<double(double)> behind, before; // by the distance from the end
    };
    const auto rounds = [](double d) { return std::floor(d / 4) + 1; };
    const auto rest = [&](double d) { return d - 4 * (rounds(d) - 1); };
    const auto odd = [&](double d) { return std::fmod(rounds(d), 2) == 1; };
    const Case cases[] = {
        {Infinity::constant, [](double) { return 11.; }, [](double) { return 10.; }},
        {Infinity{77}, [](double) { return 11.; }, [](double) { return 10.; }},
        {Infinity::linear, [](double) { return 11.; }, [](double) { return 10.; }}, // level on the side without a key
        {Infinity::cycle, [&](double d) { return at(2 + rest(d)); }, [&](double d) { return at(6 - rest(d)); }},
        {Infinity::cycle_with_offset, [&](double d) { return at(2 + rest(d)) + rounds(d); },
         [&](double d) { return at(6 - rest(d)) - rounds(d); }},
        {Infinity::oscillate, [&](double d) { return at(odd(d) ? 6 - rest(d) : 2 + rest(d)); },
         [&](double d) { return at(odd(d) ? 2 + rest(d) : 6 - rest(d)); }}};
    for (const Case& each : cases) {
        AnimCurve curve = inside;
        curve.before = curve.behind = each.how;
        for (double d = .25; d < 21; d += .25) {
            EXPECT_NEAR(curve.evaluate(6 + d), each.behind(d), 1e-12) << static_cast<int>(each.how) << " at " << d;
            EXPECT_NEAR(curve.evaluate(2 - d), each.before(d), 1e-12) << static_cast<int>(each.how) << " at " << d;
        }
        for (const double far : {1e300, infinite}) {
            EXPECT_TRUE(std::isfinite(curve.evaluate(far)));
            EXPECT_TRUE(std::isfinite(curve.evaluate(-far)));
        }
    }
}

TEST(AnimCurve, the_cursor_gives_the_same_in_any_order_of_asking) {
    const AnimCurve asked = curve_of_keys(hill, Tangent::spline);
    for (const double t : {5., .5, 1., 5.999, 3.5, 2.9, 0., 6., 1.5, 4.5, -1., 4.6})
        EXPECT_EQ(asked.evaluate(t), curve_of_keys(hill, Tangent::spline).evaluate(t)) << t;
}

TEST(AnimCurve, degenerate_curves_have_a_value_everywhere) {
    EXPECT_EQ(AnimCurve().evaluate(3), 0);
    for (const Infinity how : {Infinity::constant, Infinity::linear, Infinity::cycle, Infinity::oscillate}) {
        AnimCurve one = curve_of_keys({{1, 5}}, Tangent::spline);
        one.before = one.behind = how;
        for (const double t : {-1e300, 0., 1., 2., 1e300, not_a_number, infinite}) EXPECT_EQ(one.evaluate(t), 5);
    }
    const AnimCurve messy =
        curve_of_keys({{3, 30}, {1, 10}, {not_a_number, 7}, {1, 11}, {2, infinite}, {2, 20}}, Tangent::linear);
    EXPECT_FALSE(messy.ordered());
    const AnimCurve clean = messy.in_order();
    ASSERT_TRUE(clean.ordered());
    ASSERT_EQ(clean.size(), 3u);
    for (const auto& [time, value] : {std::pair{1., 11.}, {2., 20.}, {2.5, 25.}, {3., 30.}})
        EXPECT_DOUBLE_EQ(clean.evaluate(time), value);

    const AnimCurve huge = curve_of_keys({{-1e308, -1e308}, {0, 1e308}, {5e-324, -1e308}}, Tangent::spline);
    for (const double t : {-2e307, -1., 0., 1e-323, 1e308}) EXPECT_TRUE(std::isfinite(huge.evaluate(t))) << t;
}

TEST(KeyTimes, sharers_part_when_one_of_them_differs) {
    KeyTimes a, b;
    a.push_back(1);
    b.share(a);
    b.push_back(1);
    for (const double t : {2., 3.}) {
        a.push_back(t);
        b.push_back(t);
    }
    EXPECT_TRUE(a.shares_with(b));
    KeyTimes c = b;
    c.insert(1, 1.5);
    a.push_back(4);
    b.push_back(5);
    EXPECT_EQ(std::vector<double>(a.view().begin(), a.view().end()), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(std::vector<double>(b.view().begin(), b.view().end()), (std::vector<double>{1, 2, 3, 5}));
    EXPECT_EQ(std::vector<double>(c.view().begin(), c.view().end()), (std::vector<double>{1, 1.5, 2, 3}));
}

} // namespace
} // namespace headless
