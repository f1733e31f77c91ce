#pragma once

/// A bar on standard error for work that takes longer than a second. Nothing shows when standard error is no
/// terminal or the run is quiet.

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>

namespace tool {

class Progress {
public:
    /// `total` steps of work called `title`; 0 where the number isn't known, which shows the seconds alone.
    explicit Progress(std::string title, std::uint64_t total = 0);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void step() { done_.fetch_add(1, std::memory_order_relaxed); }
    /// Takes a bar away, so that a line can be written; it comes back by itself.
    static void clear_line();
    /// Keeps bars away while the user is asked something.
    class Pause {
    public:
        Pause();
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;
    };
    /// In a process that was split off: the bar is the other one's.
    static void forget_line();

private:
    void draw_until_done();
    void draw(std::chrono::steady_clock::duration elapsed);

    std::string title_;
    std::uint64_t total_;
    std::atomic<std::uint64_t> done_ = 0;
    std::mutex lock_;
    std::condition_variable wake_;
    bool finished_ = false;
    std::thread drawer_;
};

} // namespace tool
