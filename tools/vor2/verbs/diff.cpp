#include "inspect/diff_document.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/verbs/verb.h"

namespace tool {
namespace {

using namespace vor2::inspect;

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
        TextOut out(results());
        const std::uint64_t count =
            (json_ ? write_diff_json : write_diff_text)({first, second, first_, second_}, options_, out);
        if (!finish(out)) return exit_refused;
        return count == 0 ? exit_done : exit_refused;
    }

private:
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
