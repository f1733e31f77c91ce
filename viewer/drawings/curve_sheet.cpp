#include "viewer/drawings/curve_sheet.h"

#include "viewer/page/markup.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <limits>

namespace vor2::viewer {
namespace {

constexpr double width = 900, left = 64, right = 16, head = 44, lane_height = 120, title_height = 22, lane_foot = 14;
constexpr double plot_width = width - left - right;

constexpr std::string_view style =
    "text{font:12px system-ui,'DejaVu Sans',sans-serif;fill:#1d2229}.quiet{fill:#566070}.title{font-weight:650}"
    ".back{fill:#fff}.grid{stroke:#e4e7ec}path{fill:none;stroke-width:1.5}.c0{stroke:#d3343a;fill:#d3343a}"
    ".c1{stroke:#2b8a3e;fill:#2b8a3e}.c2{stroke:#2367d1;fill:#2367d1}.c3{stroke:#7d55c7;fill:#7d55c7}path.c0,path.c1,"
    "path.c2,path.c3{fill:none}text.c0,text.c1,text.c2,text.c3{stroke:none}.other{stroke-dasharray:5 4}"
    "@media(prefers-color-scheme:dark){text{fill:#e7eaef}.quiet{fill:#a2abb9}.back{fill:#181b21}.grid{stroke:#2d323c}"
    ".c0{stroke:#ff6b70;fill:#ff6b70}.c1{stroke:#6fd07f;fill:#6fd07f}.c2{stroke:#6ea8ff;fill:#6ea8ff}"
    ".c3{stroke:#b99cff;fill:#b99cff}}";

std::string number(double value) {
    char text[32];
    (void)std::snprintf(text, sizeof text, "%.5g", value == 0 ? 0.0 : value);
    return text;
}
/// A place in the picture.
std::string place(double value) {
    char text[32];
    (void)std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

struct Range {
    double low = std::numeric_limits<double>::infinity(), high = -low;
};

Range range_of(const Lane& lane) {
    Range range;
    for (const Curve& curve : lane.curves) {
        for (const double value : curve.values) {
            if (!std::isfinite(value)) continue;
            range.low = std::min(range.low, value);
            range.high = std::max(range.high, value);
        }
    }
    if (range.low > range.high) return {0, 1};
    // What hardly moves is drawn as what it is, a level line.
    const double least = std::max(1e-4, 1e-4 * std::max(std::abs(range.low), std::abs(range.high)));
    const double lacking = std::max(0.0, least - (range.high - range.low)) / 2;
    return {range.low - lacking, range.high + lacking};
}

class Drawing {
public:
    explicit Drawing(const CurveSheet& sheet) : sheet_(sheet), span_(std::max(sheet.end - sheet.start, 1e-6)) {}

    std::string draw() {
        const double height = head + lane_height * static_cast<double>(sheet_.lanes.size()) + 26;
        out_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " + place(width) + " " + place(height) +
               "\" width=\"" + place(width) + "\" height=\"" + place(height) + "\" role=\"img\">\n<title>" +
               as_text(sheet_.title) + "</title>\n<style>" + std::string(style) +
               "</style>\n<rect class=\"back\" width=\"100%\" height=\"100%\"/>\n";
        text(left, 24, "title", sheet_.title);
        text(left, 39, "quiet", sheet_.legend);
        draw_times(height);
        for (std::size_t i = 0; i < sheet_.lanes.size(); ++i)
            draw_lane(sheet_.lanes[i], head + lane_height * static_cast<double>(i));
        return out_ += "</svg>\n";
    }

private:
    double x_of(double time) const { return left + (time - sheet_.start) / span_ * plot_width; }

    void text(double x, double y, std::string_view kind, std::string_view words, std::string_view anchor = "start") {
        out_ += "<text x=\"" + place(x) + "\" y=\"" + place(y) + "\" class=\"" + std::string(kind) +
                "\" text-anchor=\"" + std::string(anchor) + "\">" + as_text(words) + "</text>\n";
    }

    void draw_times(double height) {
        const double wanted = span_ / 8, power = std::pow(10, std::floor(std::log10(wanted)));
        double step = power;
        for (const double factor : {1.0, 2.0, 5.0, 10.0}) {
            step = factor * power;
            if (step >= wanted) break;
        }
        const double first = std::ceil(sheet_.start / step);
        for (int i = 0; i < 100; ++i) {
            const double time = (first + i) * step, x = x_of(time);
            if (x > width - right + 0.01) break;
            out_ +=
                "<path class=\"grid\" d=\"M" + place(x) + " " + place(head + 6) + "V" + place(height - 22) + "\"/>\n";
            text(x, height - 8, "quiet", number(time) + " s", "middle");
        }
    }

    void draw_lane(const Lane& lane, double top) {
        const Range range = range_of(lane);
        const double high_y = top + title_height, low_y = top + lane_height - lane_foot;
        const auto y_of = [&](double value) {
            return low_y - (value - range.low) / (range.high - range.low) * (low_y - high_y);
        };
        out_ +=
            "<path class=\"grid\" d=\"M" + place(left) + " " + place(low_y + 4) + "H" + place(width - right) + "\"/>\n";
        text(left - 6, high_y + 8, "quiet", number(range.high), "end");
        text(left - 6, low_y, "quiet", number(range.low), "end");
        text(left + 4, top + 16, "title", lane.title + (lane.unit.empty() ? "" : " (" + lane.unit + ")"));
        double x = width - right - 4;
        std::size_t colour = lane.curves.size();
        for (auto curve = lane.curves.rbegin(); curve != lane.curves.rend(); ++curve) {
            --colour;
            if (curve->dashed || curve->name.empty()) continue;
            text(x, top + 16, "c" + std::to_string(colour % 4), curve->name, "end");
            x -= 12 + 7 * static_cast<double>(curve->name.size());
        }
        std::array<std::size_t, 2> numbers{};
        for (const Curve& curve : lane.curves) draw_curve(curve, numbers[curve.dashed ? 1 : 0]++, y_of);
    }

    void draw_curve(const Curve& curve, std::size_t index, const auto& y_of) {
        const std::string kind = lone_colour(index);
        out_ += "<path class=\"" + kind + (curve.dashed ? " other" : "") + "\" d=\"";
        bool drawing = false;
        for (std::size_t i = 0; i < curve.times.size(); ++i) {
            const bool finite = std::isfinite(curve.values[i]);
            if (finite)
                out_ += (drawing ? "L" : "M") + place(x_of(curve.times[i])) + " " + place(y_of(curve.values[i]));
            drawing = finite;
        }
        out_ += "\"/>\n";
        // Keys that stand closer than their dots are left to the line.
        if (curve.dashed || static_cast<double>(curve.keys.size()) * 5 > plot_width) return;
        for (const std::size_t key : curve.keys) {
            if (!std::isfinite(curve.values[key])) continue;
            out_ += "<circle class=\"" + kind + "\" cx=\"" + place(x_of(curve.times[key])) + "\" cy=\"" +
                    place(y_of(curve.values[key])) + "\" r=\"2\"/>\n";
        }
    }
    static std::string lone_colour(std::size_t index) { return "c" + std::to_string(index % 4); }

    const CurveSheet& sheet_;
    double span_;
    std::string out_;
};

} // namespace

std::string svg_of(const CurveSheet& sheet) {
    return Drawing(sheet).draw();
}

} // namespace vor2::viewer
