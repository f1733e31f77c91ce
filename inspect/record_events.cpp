#include "inspect/record_events.h"

#include "format/core/record_visitor.h"

namespace vor2::inspect {

using namespace VOR2_LOADER;

namespace {

constexpr std::size_t most_events = 2048;
constexpr std::size_t most_numbers = 1U << 18;
constexpr std::size_t most_batches_ahead = 2;

} // namespace

class EventWriter final : public RECORD_VISITOR {
public:
    explicit EventWriter(RecordEvents& reader) : reader_(reader) {}

    void boolean(std::string_view name, bool value) override {
        add({.kind = Kind::boolean, .name = name, .integer = value ? 1 : 0});
    }
    void signed_number(std::string_view name, i32 value) override {
        add({.kind = Kind::integer, .name = name, .integer = value});
    }
    void unsigned_number(std::string_view name, u32 value) override {
        add({.kind = Kind::integer, .name = name, .integer = value});
    }
    void real(std::string_view name, f32 value) override {
        add({.kind = Kind::real, .name = name, .number = double{value}});
    }
    void long_real(std::string_view name, f64 value) override {
        add({.kind = Kind::long_real, .name = name, .number = value});
    }
    void text(std::string_view name, const TEXT& value) override {
        const std::size_t first = batch_.text.size();
        batch_.text.append(value.view());
        add({.kind = Kind::text, .name = name, .first = first, .count = value.view().size()});
    }
    void tuple(std::string_view name, std::span<const f32> components) override {
        put_reals(name, components, static_cast<u32>(components.size()), false);
    }
    void reals(std::string_view name, std::span<const f32> numbers, u32 width) override {
        put_reals(name, numbers, width, true);
    }
    void signed_numbers(std::string_view name, std::span<const i32> numbers) override { put_integers(name, numbers); }
    void unsigned_numbers(std::string_view name, std::span<const u32> numbers) override { put_integers(name, numbers); }
    void begin_object(std::string_view name, std::string_view class_name) override {
        add({.kind = Kind::begin_object, .name = name, .class_name = class_name});
    }
    void end_object() override { add({.kind = Kind::end_object}); }
    void absent(std::string_view name) override { add({.kind = Kind::absent, .name = name}); }
    void begin_list(std::string_view name, u64 count) override {
        add({.kind = Kind::begin_list, .name = name, .count = static_cast<std::size_t>(count)});
    }
    void end_list() override { add({.kind = Kind::end_list}); }

    void finish() {
        batch_.events.push_back({});
        reader_.hand_over(std::move(batch_));
    }

private:
    using Kind = RecordEvent::Kind;

    void add(RecordEvent event) {
        batch_.events.push_back(event);
        if (batch_.events.size() < most_events &&
            batch_.reals.size() + batch_.integers.size() + batch_.text.size() < most_numbers) {
            return;
        }
        reader_.hand_over(std::move(batch_));
        batch_ = {};
    }
    void put_reals(std::string_view name, std::span<const f32> numbers, u32 width, bool is_list) {
        const std::size_t first = batch_.reals.size();
        batch_.reals.insert(batch_.reals.end(), numbers.begin(), numbers.end());
        add({.kind = Kind::reals,
             .name = name,
             .first = first,
             .count = numbers.size(),
             .width = width,
             .is_list = is_list});
    }
    template<class NUMBER>
    void put_integers(std::string_view name, std::span<const NUMBER> numbers) {
        const std::size_t first = batch_.integers.size();
        batch_.integers.insert(batch_.integers.end(), numbers.begin(), numbers.end());
        add({.kind = Kind::integers, .name = name, .first = first, .count = numbers.size()});
    }

    RecordEvents& reader_;
    RecordEvents::Batch batch_;
};

RecordEvents::RecordEvents(const VOR2& scene) : walker_([this, &scene] { walk(scene); }) {
    take_batch();
}

RecordEvents::~RecordEvents() {
    {
        const std::lock_guard guard(lock_);
        reader_gone_ = true;
    }
    changed_.notify_all();
    walker_.join();
}

void RecordEvents::walk(const VOR2& scene) {
    try {
        EventWriter writer(*this);
        scene.describe(writer);
        writer.finish();
    } catch (const ReaderGone&) { // NOLINT(bugprone-empty-catch): nobody is left to tell
    }
}

void RecordEvents::hand_over(Batch&& batch) {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return reader_gone_ || ready_.size() < most_batches_ahead; });
    if (reader_gone_) throw ReaderGone();
    ready_.push_back(std::move(batch));
    guard.unlock();
    changed_.notify_all();
}

void RecordEvents::take_batch() {
    std::unique_lock guard(lock_);
    changed_.wait(guard, [this] { return !ready_.empty(); });
    batch_ = std::move(ready_.front());
    ready_.pop_front();
    place_ = 0;
    guard.unlock();
    changed_.notify_all();
}

void RecordEvents::next() {
    if (now().kind == RecordEvent::Kind::end_of_scene) return;
    if (++place_ == batch_.events.size()) take_batch();
}

void RecordEvents::skip_value() {
    std::size_t depth = 0;
    do {
        const RecordEvent::Kind kind = now().kind;
        if (kind == RecordEvent::Kind::end_of_scene) return;
        if (kind == RecordEvent::Kind::begin_object || kind == RecordEvent::Kind::begin_list) ++depth;
        if (kind == RecordEvent::Kind::end_object || kind == RecordEvent::Kind::end_list) --depth;
        next();
    } while (depth > 0);
}

} // namespace vor2::inspect
