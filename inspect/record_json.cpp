#include "inspect/record_json.h"

#include "format/core/record_visitor.h"

namespace vor2::inspect {
namespace {

using namespace VOR2_LOADER;

class JsonDump final : public RECORD_VISITOR {
public:
    explicit JsonDump(JsonWriter& json) : json_(json) {}

    void boolean(std::string_view name, bool value) override { at(name).boolean(value); }
    void signed_number(std::string_view name, i32 value) override { at(name).number(i64{value}); }
    void unsigned_number(std::string_view name, u32 value) override { at(name).number(u64{value}); }
    void real(std::string_view name, f32 value) override { at(name).number(value); }
    void long_real(std::string_view name, f64 value) override { at(name).number(value); }
    void text(std::string_view name, const TEXT& value) override { at(name).text(value.view()); }
    void tuple(std::string_view name, std::span<const f32> components) override {
        at(name);
        put_tuple(components);
    }
    void reals(std::string_view name, std::span<const f32> numbers, u32 width) override {
        if (width == 1) {
            at(name);
            put_tuple(numbers);
            return;
        }
        at(name).begin_array();
        for (std::size_t i = 0; i + width <= numbers.size(); i += width) put_tuple(numbers.subspan(i, width));
        json_.end_array();
    }
    void signed_numbers(std::string_view name, std::span<const i32> numbers) override {
        put_integers<i64>(name, numbers);
    }
    void unsigned_numbers(std::string_view name, std::span<const u32> numbers) override {
        put_integers<u64>(name, numbers);
    }
    void begin_object(std::string_view name, std::string_view class_name) override {
        at(name).begin_object();
        json_.text("class", class_name);
    }
    void end_object() override { json_.end_object(); }
    void absent(std::string_view name) override { at(name).null(); }
    void begin_list(std::string_view name, u64) override { at(name).begin_array(); }
    void end_list() override { json_.end_array(); }

private:
    JsonWriter& at(std::string_view name) {
        if (!name.empty()) json_.key(name);
        return json_;
    }
    void put_tuple(std::span<const f32> numbers) {
        json_.begin_array(true);
        for (const f32 number : numbers) json_.number(number);
        json_.end_array();
    }
    template<class WIDE, class NUMBER>
    void put_integers(std::string_view name, std::span<const NUMBER> numbers) {
        at(name).begin_array(true);
        for (const NUMBER number : numbers) json_.number(WIDE{number});
        json_.end_array();
    }

    JsonWriter& json_;
};

} // namespace

void write_scene_json(const VOR2& scene, TextOut& out) {
    JsonWriter json(out, JsonWriter::Layout::indented);
    JsonDump dump(json);
    json.begin_object();
    scene.describe(dump);
    json.end_object();
    json.finish();
}

} // namespace vor2::inspect
