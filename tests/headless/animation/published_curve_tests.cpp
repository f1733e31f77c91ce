#include "headless/animation/anim_curve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace headless {
namespace {

// Curves, and what the real host's published evaluation gives for them: the weighting and both infinities; by key the
// time, the value and both tangents, a fixed one with its vector; then times and values. Most were once worked out
// otherwise here.
constexpr const char* curves[] = {
    "weighted linear offset | -0.25 5 linear fixed 0.75 1.75 | 0.25 -3.5 flat linear | 1.25 4.25 linear step |"
    " -1.49 5 -1.09 5 -0.89 5 1.91 -3.01",
    "weighted constant linear | -0.5 -2.75 fixed 3 -0.25 linear | 0 -2.77 flat linear | 1 -9.5 step fixed 3 -0.25 |"
    " -0.74 -2.75 0.36 -5.1928 0.46 -5.8658 0.76 -7.8848",
    "weighted linear linear | -0.25 3.25 auto flat | 0.75 8.5 linear flat | 1.5 -4.5 fixed 3 -2.5 step |"
    " 0.86 1.155613 1.36 -4.290772 1.46 -4.459739 3.81 -4.5",
    "weighted constant constant | -0.5 2 linear step | 0.75 1.96 plateau step | 1.25 1 plateau fixed 0.75 2.5 |"
    " 1.31 1 2.61 1 3.21 1 3.76 1",
    "plain constant constant | -0.75 -7.75 auto step | -0.5 8.5 auto stepnext | 0.5 0 linear stepnext |"
    " -0.39 8.5 -0.14 8.5 0.46 8.5 0.66 0",
    "plain cycle oscillate | -0.5 -8 linear plateau | -0.25 -7.98 fixed 1.75 -3 plateau | 0.5 6.5 spline spline |"
    " -1.39 -7.945327 -0.94 -4.05486 0.16 -1.691038 0.21 -0.4267515",
    "plain offset constant | 1 -9.5 clamped spline | 1.5 -9.52 clamped clamped | 2 -9.54 linear clamped |"
    " 0.56 -9.480541 1.66 -9.523441 1.76 -9.528004 2.51 -9.54",
    "weighted cycle linear | 0.5 5.75 plateau plateau | 1.25 5.71 flat plateau | 2.5 -7.5 stepnext linear |"
    " -1.29 5.742348 0.16 -7.606269 1.66 -6.137948 2.16 -7.606269",
    "plain offset linear | -0.5 9.5 auto flat | 0 -1 stepnext auto | 1.25 -4.5 clamped auto | 2 1 linear auto |"
    " -2.74 12.37027 -0.39 8.180132 -0.09 -0.162388 3.41 1",
    "weighted linear constant | -1 6 fixed 2 1.25 linear | 0.25 6 linear clamped | 0.75 8.75 auto fixed 3 -1 |"
    " 0.46 7.047816 0.61 8.223936 0.71 8.700016 2.71 8.75",
    "plain offset linear | 0.75 3.5 linear fixed 2.5 -0.5 | 1.75 -7.75 clamped linear | 2.25 -7.73 linear spline |"
    " -0.09 6.481901 1.31 -3.154323 1.51 -6.125795 2.91 -7.7036",
    "weighted cycle oscillate | 1 -3.25 spline flat | 2.25 -3.23 flat flat | 3.5 3.25 spline flat |"
    " -1.24 -3.247764 -0.59 -3.233634 -0.39 -3.230696 0.76 1.812826",
    "plain cycle linear | 0.5 1 linear step | 0.75 0.98 linear step | 1.75 1.5 linear step | 2 9.5 linear linear |"
    " -0.44 0.98 2.66 9.5 2.76 9.5 3.06 9.5",
    "plain oscillate constant | 0.25 -9 flat step | 0.5 -9 stepnext stepnext | 2 -2.5 flat step |"
    " -0.74 -9 0.91 -9 1.36 -9 2.21 -2.5",
    "weighted offset offset | 0.75 9.5 linear spline | 1.25 9.54 spline clamped | 1.75 3.5 spline spline |"
    " -0.34 16.74767 0.11 15.97006 1.41 8.500927 1.71 4.018764",
    "weighted constant cycle | 0 1.75 linear plateau | 1.25 1.79 plateau stepnext | 1.75 1.79 clamped stepnext |"
    " -0.74 1.75 0.31 1.75616 2.16 1.760087 3.91 1.760087",
    "plain offset oscillate | 0.25 6.75 linear flat | 0.5 7.75 plateau plateau | 1 7.77 plateau step |"
    " -0.49 5.734672 0.46 7.681392 0.66 7.754833 1.96 7.681392",
    "plain offset offset | 0 2.5 spline step | 1.25 8.25 fixed 2.75 -3 stepnext | 2 1.25 linear auto |"
    " -0.84 3.75 -0.59 9.5 1.26 8.25 1.56 8.25",
    "weighted constant offset | 0 -7 linear clamped | 0.75 -7.02 linear fixed 2.5 -1.25 | 1.25 3 auto fixed 0.5 3 |"
    " -0.69 -7 0.06 -7.000246 0.41 -7.008686 2.41 6.109673",
    "weighted offset linear | 0.5 6.5 linear step | 2 6.52 flat linear | 2.5 -10 linear linear |"
    " 0.96 6.5 2.96 -10 3.51 -10 5.26 -10",
    "weighted constant linear | 0.25 -7 linear flat | 0.5 0.5 fixed 0.25 -2.25 flat | 2 0.48 clamped flat |"
    " 1.01 0.4946362 1.16 0.4917914 1.36 0.4878158 2.91 0.48",
    "weighted constant linear | -0.75 -2 linear step | -0.25 -9.75 linear fixed 3 1.5 | 0.5 2.25 flat stepnext |"
    " -2.39 -2 0.06 -9.086781 0.31 -6.864983 0.91 2.66",
    "plain cycle cycle | 0.5 2.75 stepnext stepnext | 1.5 8.25 linear linear | 2 8.23 stepnext stepnext |"
    " -1.24 8.172108 -0.74 8.25 1.66 8.207391 1.86 8.160121",
    "weighted offset oscillate | 0 -1 auto flat | 1 -1.02 spline spline | 1.25 -5 spline spline |"
    " -1.69 7.3808 -1.29 3.705183 0.56 -0.5702426 1.46 -1.297791",
    "weighted linear offset | 0.25 8.25 clamped clamped | 1 8.25 linear clamped | 1.5 8.21 clamped clamped |"
    " 1.31 8.222938 1.46 8.210727 2.66 8.173421 3.21 8.17",
    "plain linear linear | -0.5 -6.75 linear plateau | 0.25 -6.25 flat plateau | 1 -2.5 plateau stepnext |"
    " 0.06 -6.330008 0.26 -6.248018 0.56 -4.857618 2.36 -1.14",
    "plain linear cycle | -0.25 -7.75 auto auto | 0 7.5 auto auto | 1 7.46 auto plateau | 2.25 -6.5 plateau flat |"
    " -2.99 -7.75 1.01 7.457334 1.51 2.384739 3.51 7.457334",
    "weighted cycle constant | 0 -4.75 linear linear | 0.75 9.25 linear step | 1 9.21 fixed 0.75 -0.25 auto |"
    " 0.26 0.1033333 1.36 9.21 1.56 9.21 2.06 9.21",
    "plain oscillate oscillate | -0.25 2.5 linear flat | 0.25 2.54 plateau spline | 1.5 4.25 linear auto |"
    " -0.09 2.509667 0.06 2.527062 3.11 2.507652 3.81 2.602069",
    "plain linear cycle | 0.75 -8.25 linear flat | 1.25 5.5 flat plateau | 2 6 stepnext flat |"
    " -1.14 -8.25 0.81 -7.70352 1.41 5.531706 1.46 5.553312",
    "weighted oscillate constant | -0.75 -2.75 linear stepnext | 0.5 8.5 auto step | 2 8.54 step step |"
    " -1.59 -2.75 0.11 -2.75 0.46 -2.75 4.31 8.54",
    "weighted offset linear | 0.5 9.75 stepnext stepnext | 2 8 auto stepnext | 3 7.5 linear step |"
    " -3.24 12.5 1.76 8 2.26 7.5 4.41 7.5",
    "weighted oscillate linear | 0.5 1.5 spline clamped | 0.75 -7.25 spline spline | 1.75 -7.23 clamped clamped |"
    " -1.04 -7.651092 0.46 -0.05061402 1.06 -8.276201 1.56 -7.436111",
    "weighted linear offset | 0 -6 clamped linear | 1 -6.02 clamped clamped | 1.25 -6.04 spline spline |"
    " -0.79 -5.9842 0.56 -6.01396 0.96 -6.019937 2.21 -6.059937",
    "weighted oscillate linear | 0.25 5.75 plateau plateau | 0.5 6.75 plateau plateau | 1.5 7.25 stepnext auto |"
    " -0.04 6.795299 0.81 6.655074 1.46 7.210174 2.46 7.25",
    "weighted linear offset | -0.5 -1.25 spline linear | 0.25 -1.29 auto auto | 1 -4 auto auto |"
    " -2.14 -1.162533 -0.74 -1.2372 -0.14 -1.259615 2.46 -6.72802"};

struct Published {
    AnimCurve curve;
    std::vector<std::pair<double, double>> samples;
};

Tangent read_tangent(std::istream& in, TangentVector& vector) {
    std::string name;
    in >> name;
    if (name == "fixed") in >> vector.x >> vector.y;
    return tangent_by_name(name).value();
}

Published read(const std::string& text) {
    static const std::map<std::string, Infinity> infinities = {{"constant", Infinity::constant},
                                                               {"linear", Infinity::linear},
                                                               {"cycle", Infinity::cycle},
                                                               {"offset", Infinity::cycle_with_offset},
                                                               {"oscillate", Infinity::oscillate}};
    Published out;
    std::istringstream in(text);
    std::string weighting, before, behind, bar;
    in >> weighting >> before >> behind >> bar;
    out.curve.set_weighted(weighting == "weighted");
    out.curve.before = infinities.at(before);
    out.curve.behind = infinities.at(behind);
    for (std::string part; std::getline(in, part, '|');) {
        std::istringstream words(part);
        const bool last = in.eof();
        for (double time, value; words >> time >> value;) {
            if (last) {
                out.samples.emplace_back(time, value);
                continue;
            }
            CurveKey key;
            key.time = time;
            key.value = value;
            key.in = read_tangent(words, key.in_vector);
            key.out = read_tangent(words, key.out_vector);
            out.curve.insert(out.curve.size(), key);
        }
    }
    return out;
}

TEST(PublishedCurves, have_the_values_that_the_real_host_gives) {
    for (const char* text : curves) {
        const Published published = read(text);
        ASSERT_EQ(published.samples.size(), 4U) << text;
        for (const auto& [time, value] : published.samples)
            EXPECT_NEAR(published.curve.evaluate(time), value, 1e-5 * (1 + std::abs(value))) << time << " in " << text;
    }
}

TEST(PublishedCurves, give_the_same_in_any_order_of_asking) {
    for (const char* text : curves) {
        const Published published = read(text);
        for (auto sample = published.samples.rbegin(); sample != published.samples.rend(); ++sample)
            EXPECT_NEAR(published.curve.evaluate(sample->first), sample->second, 1e-5 * (1 + std::abs(sample->second)))
                << sample->first << " in " << text;
    }
}

} // namespace
} // namespace headless
