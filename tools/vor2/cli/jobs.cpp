#include "tools/vor2/cli/jobs.h"

#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/system.h"
#include "tools/vor2/verbs/verb.h"

#include <cerrno>
#include <map>
#include <memory>

namespace tool {
namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { (void)std::fclose(file); }
};
using ScratchStream = std::unique_ptr<std::FILE, CloseFile>;

/// What one worker prints, until its turn comes.
struct Report {
    ScratchStream output, errors;
    int exit_code = exit_refused;
    bool finished = false;
};

void copy_out(std::FILE* from, std::FILE* to) {
    char block[1 << 14];
    if (std::fseek(from, 0, SEEK_SET) != 0) return;
    for (std::size_t size = 0; (size = std::fread(block, 1, sizeof block, from)) > 0;)
        (void)std::fwrite(block, 1, size, to);
    (void)std::fflush(to);
}

void copy_errors(const Report& report) {
    if (MessageListener::is_there()) {
        pass_on(report.errors.get(), report.exit_code != exit_done);
    } else {
        copy_out(report.errors.get(), stderr);
    }
}

class WorkerPool {
public:
    WorkerPool(const std::vector<std::string>& files, const std::string& title,
               const std::function<int(std::size_t)>& work)
        : files_(files), work_(work), progress_(title, files.size()) {}

    int run(unsigned jobs) {
        while (printed_ < files_.size()) {
            // Reports that wait for their turn are bounded too: a slow first file holds back the rest.
            while (next_ < files_.size() && running_.size() < jobs && next_ - printed_ < std::size_t{8} * jobs) start();
            if (!running_.empty()) wait();
            print_finished();
        }
        return failed_ == 0 ? exit_done : exit_refused;
    }
    std::size_t failed() const { return failed_; }

private:
    void start() {
        const std::size_t index = next_++;
        Report& report = reports_[index];
        report.output.reset(temporary_stream());
        report.errors.reset(temporary_stream());
        if (!report.output || !report.errors) return give_up(report, index, errno);
        const long worker = start_worker(report.output.get(), report.errors.get(), [this, index] {
            Progress::forget_line();
            MessageListener::leave();
            return work_(index);
        });
        if (worker < 0) return give_up(report, index, errno);
        running_.emplace(worker, index);
    }
    void give_up(Report& report, std::size_t index, int error) {
        problem(files_[index], "couldn't be started: " + error_text(error));
        report = Report{};
        report.finished = true;
        progress_.step();
    }
    void wait() {
        const WorkerEnd end = wait_for_worker();
        const auto worker = running_.find(end.handle);
        if (worker == running_.end()) return;
        Report& report = reports_[worker->second];
        report.finished = true;
        report.exit_code = end.exit_code;
        if (end.exit_code < 0) {
            const std::string line = "vor2: " + files_[worker->second] + ": the work on it was ended by signal " +
                                     std::to_string(end.signal) + "\n";
            (void)std::fputs(line.c_str(), report.errors.get());
            report.exit_code = exit_refused;
        }
        running_.erase(worker);
        progress_.step();
    }
    void print_finished() {
        for (auto first = reports_.begin(); first != reports_.end() && first->second.finished;
             first = reports_.begin()) {
            Progress::clear_line();
            if (first->second.output) copy_out(first->second.output.get(), results());
            if (first->second.errors) copy_errors(first->second);
            if (first->second.exit_code != exit_done) ++failed_;
            reports_.erase(first);
            ++printed_;
        }
    }

    const std::vector<std::string>& files_;
    const std::function<int(std::size_t)>& work_;
    Progress progress_;
    std::map<std::size_t, Report> reports_; ///< started and not yet printed
    std::map<long, std::size_t> running_;
    std::size_t next_ = 0, printed_ = 0, failed_ = 0;
};

} // namespace

int run_apart(const std::string& file, const std::string& title, const std::function<int()>& work) {
    const std::vector<std::string> files{file};
    const std::function<int(std::size_t)> one = [&work](std::size_t) { return work(); };
    return WorkerPool(files, title, one).run(1);
}

int run_for_each(const std::vector<std::string>& files, unsigned jobs, const std::string& title,
                 const std::function<int(std::size_t)>& work) {
    if (files.size() == 1) return work(0);
    WorkerPool pool(files, title, work);
    int code = pool.run(jobs > 0 ? jobs : processor_count());
    if (std::ferror(results()) != 0) {
        problem("standard output", "couldn't be written");
        code = exit_refused;
    }
    note(std::to_string(files.size()) + " files, " + std::to_string(pool.failed()) + " failed");
    return code;
}

} // namespace tool
