// Animation curves, whose keys are most of a scene.
#include "headless/animation/curve_node.h"
#include "headless/files/ma_values.h"

namespace headless {
namespace {

class KeyWriter {
public:
    KeyWriter(MaText& out, const AnimCurve& keys) : out_(out), keys_(keys) {}

    void settings() {
        out_.text("\tsetAttr \".tan\" ").integer(static_cast<int>(keys_.tangent())).end_statement();
        out_.text("\tsetAttr \".wgt\" ").text(keys_.weighted() ? "yes" : "no").end_statement();
        if (keys_.before != Infinity::constant)
            out_.text("\tsetAttr \".pre\" ").integer(static_cast<int>(keys_.before)).end_statement();
        if (keys_.behind != Infinity::constant)
            out_.text("\tsetAttr \".pst\" ").integer(static_cast<int>(keys_.behind)).end_statement();
    }

    void times_and_values(AttributeKind time_kind, AttributeKind value_kind) {
        const std::span<const double> values = keys_.values();
        const std::span<const double> times = keys_.times().view();
        each_run(
            ".ktv", [](std::size_t) { return true; },
            [&](std::size_t i) {
                out_.gap().number(times[i], time_kind).text(" ");
                out_.number(values[i], value_kind);
            });
    }

    void tangents() {
        if (keys_.has_tangent_types()) {
            types(".kit", [this](std::size_t i) { return keys_.key(i).in; });
            types(".kot", [this](std::size_t i) { return keys_.key(i).out; });
        }
        if (!keys_.has_vectors()) return;
        vectors(".kix", [this](std::size_t i) { return keys_.key(i).in_vector.x; });
        vectors(".kiy", [this](std::size_t i) { return keys_.key(i).in_vector.y; });
        vectors(".kox", [this](std::size_t i) { return keys_.key(i).out_vector.x; });
        vectors(".koy", [this](std::size_t i) { return keys_.key(i).out_vector.y; });
    }

    void marks() {
        truths(".ktl", false, [this](std::size_t i) { return keys_.key(i).tangents_locked; });
        truths(".kwl", false, [this](std::size_t i) { return keys_.key(i).weights_locked; });
        if (keys_.has_breakdowns()) truths(".kbd", true, [this](std::size_t i) { return keys_.key(i).breakdown; });
    }

private:
    // One statement for each run of neighbouring keys that `wanted` picks.
    template<typename Wanted, typename Write>
    void each_run(const char* name, Wanted&& wanted, Write&& write) {
        const std::size_t count = keys_.size();
        for (std::size_t i = 0; i < count;) {
            if (!wanted(i)) {
                ++i;
                continue;
            }
            std::size_t end = i + 1;
            while (end < count && end - i < longest_run && wanted(end)) ++end;
            out_.text("\tsetAttr");
            if (i == 0 && count > 1) out_.text(" -s ").integer(static_cast<std::int64_t>(count));
            out_.text(" \"").text(name).text("[").integer(static_cast<std::int64_t>(i));
            if (end - i > 1) out_.text(":").integer(static_cast<std::int64_t>(end) - 1);
            out_.text("]\" ");
            for (; i < end; ++i) write(i);
            out_.end_statement();
        }
    }

    template<typename Get>
    void types(const char* name, Get&& get) {
        each_run(
            name, [&](std::size_t i) { return get(i) != Tangent::by_default; },
            [&](std::size_t i) { out_.gap().integer(static_cast<int>(get(i))); });
    }

    template<typename Get>
    void vectors(const char* name, Get&& get) {
        each_run(
            name, [](std::size_t) { return true; }, [&](std::size_t i) { out_.gap().number(get(i)); });
    }

    template<typename Get>
    void truths(const char* name, bool unusual, Get&& get) {
        each_run(
            name, [&](std::size_t i) { return get(i) == unusual; },
            [&](std::size_t) { out_.gap().text(unusual ? "yes" : "no"); });
    }

    MaText& out_;
    const AnimCurve& keys_;
};

} // namespace

Result<void> write_keys(MaText& out, const Node& node) {
    const CurveData* data = CurveData::of(node);
    if (!data) return {};
    const auto kind_of = [&](const char* name) { return node.attribute(node.find_attribute(name)).kind; };
    KeyWriter keys(out, data->keys());
    keys.settings();
    keys.times_and_values(kind_of("kt"), kind_of("kv"));
    keys.tangents();
    keys.marks();
    if (out.met_no_number()) return Error{"'" + node.name() + "' has a tangent that isn't finite and can't be saved"};
    return {};
}

} // namespace headless
