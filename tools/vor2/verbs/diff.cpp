#include "tools/vor2/json_writer.h"
#include "tools/vor2/messages.h"
#include "tools/vor2/scene_diff.h"
#include "tools/vor2/scene_file.h"
#include "tools/vor2/verb.h"

namespace tool {
namespace {

void write_line(const Difference& difference, TextOut& out) {
    out.put(difference.record);
    if (difference.index) out.put("[" + std::to_string(*difference.index) + "]");
    if (!difference.name.empty()) out.put(" " + quoted(difference.name));
    if (!difference.field.empty()) out.put(" " + difference.field);
    out.put(": " + difference.first + " | " + difference.second + "\n");
}

void write_json(const Difference& difference, JsonWriter& json) {
    json.begin_object();
    json.key("record");
    json.text(difference.record);
    json.key("index");
    if (difference.index) {
        json.number(std::uint64_t{*difference.index});
    } else {
        json.null();
    }
    json.key("name");
    json.text(difference.name);
    json.key("field");
    json.text(difference.field);
    json.key("a");
    json.text(difference.first);
    json.key("b");
    json.text(difference.second);
    json.end_object();
}

class DiffVerb final : public Verb {
public:
    std::string_view name() const override { return "diff"; }
    std::string_view summary() const override { return "tell what differs between two scenes"; }
    std::string_view description() const override {
        return "Compares two scenes record by record and field by field, whatever the versions of their files, and "
               "prints a line for each difference: the record with its index and name, the field, and the two values. "
               "Exits with 1 when something differs.\n\n"
               "Two exports of the same scene differ in inf.file_info, which tells when each was made; --ignore "
               "leaves such a field out.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 diff before.vr2 after.vr2", "vor2 diff a.vr2 b.vr2 --tolerance 1e-5 --ignore inf.file_info"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_file("A", "A.vr2", "the first scene", first_);
        syntax.required_file("B", "B.vr2", "the second scene", second_);
        syntax.number("--tolerance", "X", "numbers may differ by X (default 0)", tolerance_);
        syntax.texts("--ignore", "FIELD", "leave out a record or field, by its name alone or with its record's",
                     options_.ignored);
        syntax.json(json_);
    }
    std::string check() const override {
        return tolerance_ && *tolerance_ < 0 ? "--tolerance: a number below 0 makes no sense" : "";
    }
    int run() override {
        options_.tolerance = tolerance_.value_or(0);
        VOR2_LOADER::VOR2 first, second;
        const bool loaded = load_scene(first, first_);
        if (!load_scene(second, second_) || !loaded) return exit_refused;
        TextOut out(stdout);
        const std::uint64_t count = json_ ? print_json(first, second, out) : print_lines(first, second, out);
        if (!out.finish()) return exit_refused;
        return count == 0 ? exit_done : exit_refused;
    }

private:
    std::uint64_t print_lines(const VOR2_LOADER::VOR2& first, const VOR2_LOADER::VOR2& second, TextOut& out) const {
        return compare_scenes(first, second, options_, [&out](const Difference& d) { write_line(d, out); });
    }
    std::uint64_t print_json(const VOR2_LOADER::VOR2& first, const VOR2_LOADER::VOR2& second, TextOut& out) const {
        JsonWriter json(out, JsonWriter::Layout::indented);
        json.begin_object();
        json.key("a");
        json.text(first_);
        json.key("b");
        json.text(second_);
        json.key("differences");
        json.begin_array();
        const std::uint64_t count =
            compare_scenes(first, second, options_, [&json](const Difference& d) { write_json(d, json); });
        json.end_array();
        json.key("count");
        json.number(count);
        json.end_object();
        json.finish();
        return count;
    }

    std::string first_, second_;
    std::optional<double> tolerance_;
    DiffOptions options_;
    bool json_ = false;
};

} // namespace

std::unique_ptr<Verb> make_diff_verb() {
    return std::make_unique<DiffVerb>();
}

} // namespace tool
