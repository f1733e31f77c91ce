#include "inspect/scene_diff.h"

#include "inspect/json_writer.h"
#include "inspect/record_events.h"

#include <algorithm>
#include <cmath>

namespace vor2::inspect {
namespace {

using namespace VOR2_LOADER;
using Kind = RecordEvent::Kind;

/// An object or list that both walks are inside of.
struct Level {
    std::string_view name;
    bool is_list;
    std::size_t next_index = 0; ///< of a list: of the element that comes next
    std::u16string entity_name{};
};

std::string index_text(std::size_t index) {
    return "[" + std::to_string(index) + "]";
}

std::string joined(std::span<const float> numbers) {
    std::string text;
    for (const float number : numbers) text += (text.empty() ? "" : " ") + shortest(number);
    return text;
}

std::string value_text(const RecordEvents& scene) {
    const RecordEvent& event = scene.now();
    switch (event.kind) {
    case Kind::boolean:
        return event.integer != 0 ? "true" : "false";
    case Kind::integer:
        return std::to_string(event.integer);
    case Kind::real:
        return shortest(static_cast<float>(event.number));
    case Kind::long_real:
        return shortest(event.number);
    case Kind::text:
        return quoted(scene.text());
    case Kind::begin_object:
        return std::string(event.class_name);
    case Kind::reals:
        return event.is_list ? std::to_string(event.count / event.width) + " elements" : joined(scene.reals());
    case Kind::begin_list:
    case Kind::integers:
        return std::to_string(event.count) + " elements";
    default:
        return "absent";
    }
}

class Comparison {
public:
    Comparison(const VOR2& first, const VOR2& second, const DiffOptions& options,
               const std::function<void(const Difference&)>& tell)
        : a_(first), b_(second), options_(options), tell_(tell) {}

    u64 run() {
        while (a_.now().kind != Kind::end_of_scene || b_.now().kind != Kind::end_of_scene) step();
        return count_;
    }

private:
    static bool ends(const RecordEvents& scene) {
        const Kind kind = scene.now().kind;
        return kind == Kind::end_object || kind == Kind::end_list || kind == Kind::end_of_scene;
    }

    void step() {
        if (ends(a_) && ends(b_)) return leave();
        // One of the two goes on for longer; the difference was told where their lengths or classes were.
        if (ends(a_)) return b_.skip_value();
        if (ends(b_)) return a_.skip_value();
        value();
        if (!levels_.empty() && levels_.back().is_list && !entered_) ++levels_.back().next_index;
        entered_ = false;
    }

    void leave() {
        a_.next();
        b_.next();
        if (levels_.empty()) return;
        levels_.pop_back();
        if (!levels_.empty() && levels_.back().is_list) ++levels_.back().next_index;
    }

    void value() {
        const RecordEvent& a = a_.now();
        const RecordEvent& b = b_.now();
        if (is_ignored(a.name)) return pass_both();
        if (a.kind != b.kind || a.name != b.name || a.class_name != b.class_name) {
            tell(a.name, {}, value_text(a_), value_text(b_));
            return pass_both();
        }
        if (a.kind == Kind::begin_object || a.kind == Kind::begin_list) return enter();
        if (a.kind == Kind::reals) {
            compare_reals();
        } else if (a.kind == Kind::integers) {
            compare_integers();
        } else if (!same_single()) {
            tell(a.name, {}, value_text(a_), value_text(b_));
        }
        note_entity_name();
        a_.next();
        b_.next();
    }

    void pass_both() {
        a_.skip_value();
        b_.skip_value();
    }

    void enter() {
        const RecordEvent a = a_.now();
        if (a.count != b_.now().count) tell(a.name, {}, value_text(a_), value_text(b_));
        levels_.push_back({a.name, a.kind == Kind::begin_list});
        entered_ = true;
        a_.next();
        b_.next();
    }

    bool same(double a, double b) const {
        if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
        return a == b || std::abs(a - b) <= options_.tolerance;
    }

    bool same_single() const {
        const RecordEvent& a = a_.now();
        const RecordEvent& b = b_.now();
        return a.integer == b.integer && same(a.number, b.number) && (a.kind != Kind::text || a_.text() == b_.text());
    }

    void compare_reals() {
        const RecordEvent& a = a_.now();
        const std::size_t width = std::max<u32>(1, a.width);
        const std::span<const float> x = a_.reals();
        const std::span<const float> y = b_.reals();
        if (x.size() != y.size()) tell(a.name, {}, value_text(a_), value_text(b_));
        const std::size_t shared = std::min(x.size(), y.size());
        for (std::size_t i = 0; i + width <= shared; i += width) {
            const auto same_number = [this](float p, float q) { return same(double{p}, double{q}); };
            const std::span<const float> p = x.subspan(i, width);
            const std::span<const float> q = y.subspan(i, width);
            if (std::equal(p.begin(), p.end(), q.begin(), same_number)) continue;
            tell(a.name, a.is_list ? index_text(i / width) : std::string(), joined(p), joined(q));
        }
    }

    void compare_integers() {
        const std::span<const i64> x = a_.integers();
        const std::span<const i64> y = b_.integers();
        if (x.size() != y.size()) tell(a_.now().name, {}, value_text(a_), value_text(b_));
        for (std::size_t i = 0; i < std::min(x.size(), y.size()); ++i) {
            if (x[i] != y[i]) tell(a_.now().name, index_text(i), std::to_string(x[i]), std::to_string(y[i]));
        }
    }

    void note_entity_name() {
        if (a_.now().kind == Kind::text && a_.now().name == "name" && !levels_.empty()) {
            levels_.back().entity_name = a_.text();
        }
    }

    /// Splits the way to a field at the first list: the record, the index in it, and the field within the element.
    Difference place(std::string_view field) const {
        Difference difference;
        std::string* way = &difference.record;
        const auto add = [&way](std::string_view part) {
            if (part.empty()) return;
            if (!way->empty()) *way += '.';
            *way += part;
        };
        for (std::size_t i = 0; i < levels_.size(); ++i) {
            add(levels_[i].name);
            if (!levels_[i].is_list) {
                if (i == 0) way = &difference.field;
                if (i > 0 && levels_[i - 1].is_list && difference.name.empty())
                    difference.name = levels_[i].entity_name;
                continue;
            }
            if (!difference.index) {
                // A list within the root's object is the record: "matrix_hierarchy.nodes".
                if (way == &difference.field) difference.record += "." + std::exchange(difference.field, {});
                difference.index = levels_[i].next_index;
                way = &difference.field;
            } else {
                *way += index_text(levels_[i].next_index);
            }
        }
        add(field);
        return difference;
    }

    bool is_ignored(std::string_view field) const {
        if (options_.ignored.empty()) return false;
        const Difference here = place(field);
        const std::string full = here.record + (here.field.empty() ? "" : "." + here.field);
        return std::any_of(options_.ignored.begin(), options_.ignored.end(),
                           [&](const std::string& ignored) { return ignored == full || ignored == field; });
    }

    void tell(std::string_view field, const std::string& element, std::string first, std::string second) {
        Difference difference = place(field);
        difference.field += element;
        difference.first = std::move(first);
        difference.second = std::move(second);
        ++count_;
        tell_(difference);
    }

    RecordEvents a_, b_;
    const DiffOptions& options_;
    const std::function<void(const Difference&)>& tell_;
    std::vector<Level> levels_;
    bool entered_ = false;
    u64 count_ = 0;
};

} // namespace

u64 compare_scenes(const VOR2& first, const VOR2& second, const DiffOptions& options,
                   const std::function<void(const Difference&)>& tell) {
    return Comparison(first, second, options, tell).run();
}

} // namespace vor2::inspect
