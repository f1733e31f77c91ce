#include "python/src/listener.h"
#include "python/src/work.h"
#include "support/platform/hooks.h"
#include "tools/vor2/cli/command_line.h"

#include <pybind11/stl.h>

namespace vor2::python {

namespace {

namespace platform = VOR2_LOADER::platform;

/// Takes what verbs print.
class Printed {
public:
    Printed() : file_(std::tmpfile()) {
        if (file_ == nullptr) throw std::bad_alloc();
    }
    ~Printed() { (void)std::fclose(file_); }
    Printed(const Printed&) = delete;
    Printed& operator=(const Printed&) = delete;

    std::FILE* file() const { return file_; }
    std::string text() const {
        std::string all;
        char block[1 << 14];
        (void)std::fseek(file_, 0, SEEK_SET);
        for (std::size_t size = 0; (size = std::fread(block, 1, sizeof block, file_)) > 0;) all.append(block, size);
        return all;
    }

private:
    std::FILE* file_;
};

void print_line(std::string_view line) {
    (void)std::fwrite(line.data(), 1, line.size(), tool::results());
    (void)std::fputc('\n', tool::results());
}

/// Runs a verb as the tool does. Gives its exit code and what it printed; raises what it told as problems.
py::tuple run_verb(const std::string& name, const std::vector<std::string>& words) {
    const Printed printed;
    int code = 0;
    Listener listener(printed.file());
    {
        const py::gil_scoped_release release;
        const std::lock_guard guard(outputs_lock());
        platform::print_line_hook = print_line;
        code = tool::run_verb(tool::make_verbs(), name, words);
        platform::print_line_hook = nullptr;
        // A verb's --timestamp and --user are for its own run.
        platform::fixed_time.reset();
        platform::fixed_account_name.reset();
    }
    listener.tell(code == tool::exit_usage);
    return py::make_tuple(code, text_of(printed.text()));
}

/// The options of a verb by their last name without dashes: None for a flag, else the words that it may have.
py::object options_of(const std::string& name) {
    for (const std::unique_ptr<tool::Verb>& verb : tool::make_verbs()) {
        if (verb->name() != name) continue;
        tool::CommonOptions common;
        py::dict options;
        const tool::Syntax syntax = tool::syntax_of(*verb, common);
        for (const tool::OptionRow& row : syntax.rows()) {
            if (row.is_positional()) continue;
            const std::string last = row.name_list().back();
            options[py::str(last.substr(last.find_first_not_of('-')))] =
                row.kind == tool::ValueKind::none ? py::object(py::none()) : py::cast(row.choices);
        }
        return py::object(options);
    }
    return py::none();
}

} // namespace

void add_verbs(py::module_& module) {
    module.def("run_verb", run_verb, py::arg("name"), py::arg("words"));
    module.def("options_of", options_of, py::arg("verb"));
}

} // namespace vor2::python
