#include "tools/vor2/cli/progress.h"

#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/system.h"

#include <cstdio>

namespace tool {
namespace {

constexpr auto patience = std::chrono::seconds(1);
constexpr auto redraw_time = std::chrono::milliseconds(100);
constexpr unsigned bar_width = 30;

std::atomic<bool> line_is_drawn = false;
std::mutex drawing;
bool is_paused = false; ///< under `drawing`

} // namespace

Progress::Progress(std::string title, std::uint64_t total) : title_(std::move(title)), total_(total) {
    if (!is_quiet() && error_is_terminal())
        drawer_ = std::thread([this] {
            leave_ending_to_the_first_thread();
            draw_until_done();
        });
}

Progress::~Progress() {
    if (!drawer_.joinable()) return;
    {
        const std::lock_guard guard(lock_);
        finished_ = true;
    }
    wake_.notify_one();
    drawer_.join();
    clear_line();
}

void Progress::clear_line() {
    if (line_is_drawn.exchange(false)) (void)std::fputs("\r\x1b[K", stderr);
}

Progress::Pause::Pause() {
    const std::lock_guard guard(drawing);
    is_paused = true;
    clear_line();
}

Progress::Pause::~Pause() {
    const std::lock_guard guard(drawing);
    is_paused = false;
}

void Progress::forget_line() {
    line_is_drawn = false;
}

void Progress::draw_until_done() {
    const auto start = std::chrono::steady_clock::now();
    std::unique_lock guard(lock_);
    if (wake_.wait_for(guard, patience, [this] { return finished_; })) return;
    do {
        draw(std::chrono::steady_clock::now() - start);
    } while (!wake_.wait_for(guard, redraw_time, [this] { return finished_; }));
}

void Progress::draw(std::chrono::steady_clock::duration elapsed) {
    const auto tenths = std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count() / 100;
    std::string line = "\r\x1b[K" + title_ + " ";
    if (total_ > 0) {
        const std::uint64_t done = std::min(done_.load(std::memory_order_relaxed), total_);
        const auto filled = static_cast<unsigned>(done * bar_width / total_);
        line += "[" + std::string(filled, '#') + std::string(bar_width - filled, ' ') + "] ";
        line += std::to_string(done) + "/" + std::to_string(total_) + " ";
    } else {
        // A block that wanders tells that the work goes on where nobody can tell how far it is.
        const auto place = static_cast<unsigned>(tenths % (bar_width - 3));
        line += "[" + std::string(place, ' ') + "###" + std::string(bar_width - 3 - place, ' ') + "] ";
    }
    line += std::to_string(tenths / 10) + " s";
    const std::lock_guard guard(drawing);
    if (is_paused) return;
    line_is_drawn = true;
    (void)std::fwrite(line.data(), 1, line.size(), stderr);
    (void)std::fflush(stderr);
}

} // namespace tool
