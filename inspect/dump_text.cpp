#include "inspect/dump_text.h"

#include "format/core/record_visitor.h"

#include <algorithm>
#include <vector>

namespace vor2::inspect {
namespace {

using namespace VOR2_LOADER;

class TextDump final : public RECORD_VISITOR {
public:
    explicit TextDump(TextOut& out) : out_(out) {}

    void boolean(std::string_view name, bool value) override { line(name, value ? "true" : "false"); }
    void signed_number(std::string_view name, i32 value) override { line(name, std::to_string(value)); }
    void unsigned_number(std::string_view name, u32 value) override { line(name, std::to_string(value)); }
    void real(std::string_view name, f32 value) override { line(name, shortest(value)); }
    void long_real(std::string_view name, f64 value) override { line(name, shortest(value)); }
    void text(std::string_view name, const TEXT& value) override { line(name, quoted(value.view())); }
    void tuple(std::string_view name, std::span<const f32> components) override { put_numbers(name, components); }
    void reals(std::string_view name, std::span<const f32> numbers, u32 width) override {
        begin_list(name, numbers.size() / width);
        for (std::size_t i = 0; i + width <= numbers.size(); i += width) put_numbers({}, numbers.subspan(i, width));
        end_list();
    }
    void signed_numbers(std::string_view name, std::span<const i32> numbers) override { put_integers(name, numbers); }
    void unsigned_numbers(std::string_view name, std::span<const u32> numbers) override { put_integers(name, numbers); }
    void begin_object(std::string_view name, std::string_view class_name) override {
        line(name, class_name);
        levels_.push_back(0);
    }
    void end_object() override { levels_.pop_back(); }
    void absent(std::string_view name) override { line(name, "null"); }
    void begin_list(std::string_view name, u64 count) override {
        line(name, "[" + std::to_string(count) + "]");
        levels_.push_back(0);
    }
    void end_list() override { levels_.pop_back(); }

private:
    void start_line(std::string_view name) {
        out_.indent(levels_.size());
        if (!name.empty()) return out_.put(name);
        out_.put('[');
        out_.put(std::to_string(levels_.empty() ? 0 : levels_.back()++));
        out_.put(']');
    }
    void line(std::string_view name, std::string_view value) {
        start_line(name);
        out_.put(' ');
        out_.put(value);
        out_.put('\n');
    }
    void put_numbers(std::string_view name, std::span<const f32> numbers) {
        start_line(name);
        for (const f32 number : numbers) {
            out_.put(' ');
            out_.put(shortest(number));
        }
        out_.put('\n');
    }
    template<class NUMBER>
    void put_integers(std::string_view name, std::span<const NUMBER> numbers) {
        begin_list(name, numbers.size());
        for (const NUMBER number : numbers) line({}, std::to_string(number));
        end_list();
    }

    TextOut& out_;
    std::vector<u64> levels_; ///< of each open list, the index that comes next
};

} // namespace

void write_scene_text(const VOR2& scene, TextOut& out) {
    TextDump dump(out);
    scene.describe(dump);
}

} // namespace vor2::inspect
