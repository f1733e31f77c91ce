#include "inspect/key_check.h"

#include "inspect/json_writer.h"

#include <cmath>
#include <vector>

namespace vor2::inspect {
namespace {

using namespace VOR2_LOADER;

constexpr double unit_tolerance = 1e-3;

class KeyCheck final : public RECORD_VISITOR {
public:
    explicit KeyCheck(const std::function<void(const Finding&)>& tell) : tell_(tell) {}
    u64 count() const { return count_; }

    void boolean(std::string_view, bool) override { element(); }
    void signed_number(std::string_view, i32) override { element(); }
    void unsigned_number(std::string_view, u32) override { element(); }
    void real(std::string_view name, f32 value) override { expect_finite(name, {&value, 1}); }
    void long_real(std::string_view name, f64 value) override {
        if (!std::isfinite(value)) find(name, shortest(value), "isn't finite");
        element();
    }
    void text(std::string_view name, const TEXT& value) override {
        if (name == "name" && !levels_.empty()) levels_.back().entity = value.view();
        element();
    }
    void tuple(std::string_view name, std::span<const f32> numbers) override { expect_finite(name, numbers); }
    void reals(std::string_view name, std::span<const f32> numbers, u32 width) override {
        expect_list_finite(name, numbers, width);
        if (is_track() && name == "key_times") check_times(numbers);
        if (is_track() && name == "key_values") check_values(numbers, width);
        element();
    }
    void signed_numbers(std::string_view name, std::span<const i32> numbers) override {
        if (is_track() && name == "key_values") levels_.back().values = numbers.size();
        element();
    }
    void unsigned_numbers(std::string_view, std::span<const u32>) override { element(); }
    void begin_object(std::string_view name, std::string_view class_name) override {
        levels_.push_back({std::string(name), std::string(class_name), false, 0, {}, 0, 0});
    }
    void end_object() override {
        if (is_track()) check_counts();
        levels_.pop_back();
        element();
    }
    void absent(std::string_view) override { element(); }
    void begin_list(std::string_view name, u64 count) override {
        if (is_track() && name == "key_values") levels_.back().values = count;
        levels_.push_back({std::string(name), {}, true, 0, {}, 0, 0});
    }
    void end_list() override {
        levels_.pop_back();
        element();
    }

private:
    struct Level {
        std::string name, class_name;
        bool is_list;
        u64 next; ///< of a list: the index of the element that comes or stands open
        std::u16string entity;
        u64 times, values; ///< of a track
    };

    bool is_track() const { return !levels_.empty() && levels_.back().class_name.starts_with("VOR2_ANIMATABLE_"); }
    void element() {
        if (!levels_.empty() && levels_.back().is_list) ++levels_.back().next;
    }

    void expect_finite(std::string_view name, std::span<const f32> numbers) {
        for (const f32 number : numbers) {
            if (std::isfinite(number)) continue;
            find(name, shortest(number), "isn't finite");
            break;
        }
        element();
    }
    void expect_list_finite(std::string_view name, std::span<const f32> numbers, u32 width) {
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            if (std::isfinite(numbers[i])) continue;
            return find(std::string(name) + "[" + std::to_string(i / width) + "]", shortest(numbers[i]),
                        "isn't finite");
        }
    }
    void check_times(std::span<const f32> times) {
        levels_.back().times = times.size();
        for (std::size_t i = 1; i < times.size(); ++i) {
            if (!(times[i - 1] >= times[i])) continue;
            return find("key_times[" + std::to_string(i) + "]", shortest(times[i]),
                        "doesn't come after the time before it, " + shortest(times[i - 1]));
        }
    }
    void check_values(std::span<const f32> numbers, u32 width) {
        levels_.back().values = numbers.size() / width;
        if (levels_.back().class_name.find("QUATERNION") == std::string::npos) return;
        for (std::size_t i = 0; i + width <= numbers.size(); i += width) {
            double squared = 0;
            for (u32 c = 0; c < width; ++c) squared += static_cast<double>(numbers[i + c]) * numbers[i + c];
            const double length = std::sqrt(squared);
            if (!std::isfinite(length) || std::abs(length - 1) <= unit_tolerance) continue;
            return find("key_values[" + std::to_string(i / width) + "]", shortest(static_cast<float>(length)),
                        "the rotation isn't of unit length");
        }
    }
    void check_counts() {
        const Level& track = levels_.back();
        if (track.values == 1 || (track.values == track.times && track.values > 0)) return;
        find("key_values", std::to_string(track.values) + " values",
             "out of step with " + std::to_string(track.times) + " times");
    }

    /// Tells of a field within what stands open: the record is the path up to the first list's element.
    void find(std::string_view field, std::string value, std::string complaint) {
        ++count_;
        Finding finding;
        bool in_record = true;
        for (std::size_t i = 0; i < levels_.size(); ++i) {
            const bool is_element = i > 0 && levels_[i - 1].is_list;
            const std::string part = is_element ? "[" + std::to_string(levels_[i - 1].next) + "]" : levels_[i].name;
            std::string& path = in_record ? finding.record : finding.field;
            if (!path.empty() && !is_element) path += '.';
            path += part;
            if (in_record && !levels_[i].entity.empty()) finding.name = levels_[i].entity;
            if (is_element || (i == 0 && !levels_[i].is_list && levels_[i].name != "matrix_hierarchy"))
                in_record = false;
        }
        if (!finding.field.empty() && !field.empty()) finding.field += '.';
        finding.field += field;
        finding.value = std::move(value);
        finding.complaint = std::move(complaint);
        tell_(finding);
    }

    const std::function<void(const Finding&)>& tell_;
    std::vector<Level> levels_;
    u64 count_ = 0;
};

} // namespace

std::uint64_t check_keys(const VOR2& scene, const std::function<void(const Finding&)>& tell) {
    KeyCheck check(tell);
    scene.describe(check);
    return check.count();
}

} // namespace vor2::inspect
