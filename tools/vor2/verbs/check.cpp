#include "format/geometry/scene_check.h"
#include "inspect/check_document.h"
#include "tools/vor2/cli/jobs.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/verbs/verb.h"

#include <vector>

namespace tool {
namespace {

using namespace VOR2_LOADER;
using namespace vor2::inspect;

class CheckVerb final : public Verb {
public:
    std::string_view name() const override { return "check"; }
    std::string_view summary() const override { return "check scenes for what would be wrong in use"; }
    std::string_view description() const override {
        return "Looks for UVW coordinates and normals that aren't finite, as an export does before it saves, and "
               "prints a block for each mesh. Exits with 1 when there are problems.\n\n"
               "--fix saves the scene with such numbers replaced by random ones, and the scenes that it refers to as "
               "'vor2 upgrade' does. --strict also looks for indices that name nothing, parents behind their "
               "children, keys out of order or step, rotations that aren't of unit length, weights that don't add up "
               "to 1, mapping channels that a vertex lacks, and missing references; these are told and not repaired.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 check hall.vr2", "vor2 check *.vr2 --strict --json",
                "vor2 check hall.vr2 --fix mended.vr2 --report hall.txt"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_files("FILE", "FILE...", "the scenes to check", files_);
        syntax.file("--fix", "OUT.vr2", "save the repaired scene; for one file", fixed_);
        syntax.allow_outside(allow_outside_);
        syntax.file("--report", "TXT", "write the report of the export's check, where there is something to report",
                    report_);
        syntax.flag("--strict", "also find what is wrong beyond numbers that aren't finite", strict_);
        syntax.json(json_);
        syntax.jobs(jobs_);
    }
    std::string check() const override {
        if (files_.size() > 1 && !fixed_.empty()) return "--fix: works on one file";
        if (files_.size() > 1 && !report_.empty()) return "--report: works on one file";
        return "";
    }
    int run() override {
        return run_for_each(files_, jobs_, "checking", [this](std::size_t i) { return check_file(files_[i]); });
    }

private:
    int check_file(const std::string& file) {
        VOR2 scene;
        if (!load_scene(scene, file)) return exit_refused;
        NARROW_TEXT report = report_of(scene);
        TextOut out(results());
        const std::uint64_t found = print({scene, file, library_name(file), report.view(), strict_}, out);
        bool good = finish(out) && found == 0;
        if (!report_.empty() && report.length() > 0) good = write_report(report) && good;
        if (!fixed_.empty()) {
            leave_out_missing_references(scene, file);
            check_scene(scene, report, true, nullptr, false, [](VECTOR_3 position) { return position; });
            good = save_scene(scene, fixed_, allow_outside_) && good;
        }
        return good ? exit_done : exit_refused;
    }

    std::uint64_t print(const CheckedScene& checked, TextOut& out) const {
        using Layout = JsonWriter::Layout;
        if (json_) return write_check_json(checked, files_.size() > 1 ? Layout::line : Layout::indented, out);
        const std::uint64_t found = write_check_text(checked, out);
        if (found == 0 && !is_quiet()) out.put(checked.file + ": no problems\n");
        return found;
    }

    bool write_report(const NARROW_TEXT& report) const {
        OutputSet output(report_);
        if (!output.ready()) return false;
        WRITE_FILE file;
        const u32 size = static_cast<u32>(report.length() + 1);
        const bool written = file.open(library_name(report_), false) && file.write(report.c_str(), size) == size;
        if (!file.close() || !written) {
            problem(report_, "can't be written");
            return false;
        }
        return output.commit();
    }

    std::vector<std::string> files_;
    std::string fixed_, report_;
    bool strict_ = false, json_ = false, allow_outside_ = false;
    unsigned jobs_ = 0;
};

} // namespace

std::unique_ptr<Verb> make_check_verb() {
    return std::make_unique<CheckVerb>();
}

} // namespace tool
