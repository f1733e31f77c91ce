#pragma once

/// The fields of a scene one by one, at the reader's pace.
///
/// A scene tells its fields to a visitor in one go. Comparing two scenes field by field needs both walks at once,
/// each waiting for the other: here a walk runs on a thread of its own, at most a few batches ahead of its reader, so
/// that the memory it takes doesn't grow with the scene.

#include "format/vor2.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <span>
#include <string_view>
#include <thread>
#include <vector>

namespace vor2::inspect {

struct RecordEvent {
    enum class Kind {
        boolean,
        integer, ///< signed or not
        real,
        long_real,
        text,
        reals,    ///< a vector, or a list of them; `width` numbers each
        integers, ///< a list
        begin_object,
        end_object,
        absent,
        begin_list,
        end_list,
        end_of_scene
    };
    Kind kind = Kind::end_of_scene;
    std::string_view name{};
    std::string_view class_name{};    ///< of an object that begins
    double number = 0;                ///< of a real, exact for the single ones
    VOR2_LOADER::i64 integer = 0;     ///< of an integer or a boolean
    std::size_t first = 0, count = 0; ///< numbers or code units in the batch; the elements of a list that begins
    VOR2_LOADER::u32 width = 1;       ///< numbers an element
    bool is_list = false;             ///< `reals` of a list, whose elements have indices
};

class RecordEvents {
public:
    explicit RecordEvents(const VOR2_LOADER::VOR2& scene);
    ~RecordEvents();
    RecordEvents(const RecordEvents&) = delete;
    RecordEvents& operator=(const RecordEvents&) = delete;

    const RecordEvent& now() const { return batch_.events[place_]; }
    void next();
    /// Passes over the value that stands here, an object or a list as a whole.
    void skip_value();

    // What the event that stands here holds; valid until `next`.
    std::span<const float> reals() const { return std::span(batch_.reals).subspan(now().first, now().count); }
    std::span<const VOR2_LOADER::i64> integers() const {
        return std::span(batch_.integers).subspan(now().first, now().count);
    }
    std::u16string_view text() const { return std::u16string_view(batch_.text).substr(now().first, now().count); }

private:
    friend class EventWriter;
    struct Batch {
        std::vector<RecordEvent> events;
        std::vector<float> reals;
        std::vector<VOR2_LOADER::i64> integers;
        std::u16string text;
    };
    /// What ends a walk whose reader has gone.
    struct ReaderGone {};

    void walk(const VOR2_LOADER::VOR2& scene);
    void hand_over(Batch&& batch);
    void take_batch();

    Batch batch_;
    std::size_t place_ = 0;
    std::mutex lock_;
    std::condition_variable changed_;
    std::deque<Batch> ready_;
    bool reader_gone_ = false;
    std::thread walker_;
};

} // namespace vor2::inspect
