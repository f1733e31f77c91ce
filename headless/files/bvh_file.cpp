#include "headless/files/bvh_file.h"

#include "headless/files/text_cursor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace headless {
namespace {

constexpr std::array<std::string_view, 6> channel_names = {"xposition", "yposition", "zposition",
                                                           "xrotation", "yrotation", "zrotation"};

class BvhParser {
public:
    BvhParser(std::string_view text, const std::string& path) : in_(text, path) {}

    Result<BvhFile> parse() {
        if (!hierarchy() || !motion()) return in_.error();
        return std::move(file_);
    }

private:
    bool expect(std::string_view keyword);
    bool hierarchy();
    bool top_level();
    bool inside_joint();
    bool open_joint(bool end_site);
    bool offset();
    bool channels();
    bool number(double& out, const char* what);
    bool count(std::size_t& out, const char* what);
    bool motion();
    bool frame_time();
    bool frame_values();
    bool count_frames(std::size_t found);
    bool check_frame_time(std::size_t frames);

    BvhJoint& open() { return file_.joints[static_cast<std::size_t>(open_.back())]; }

    TextCursor in_;
    BvhFile file_;
    std::vector<int> open_; ///< joints whose braces are open, outermost first
    std::size_t frame_time_at_ = 0;
    bool done_ = false;
};

bool BvhParser::expect(std::string_view keyword) {
    const std::size_t start = in_.skip_blanks();
    const std::string_view found = in_.word();
    return same_word(found, keyword) ||
           in_.fail(start, "expected " + std::string(keyword) + ", found " + in_.quoted(found));
}

bool BvhParser::number(double& out, const char* what) {
    const std::size_t start = in_.skip_blanks();
    return in_.number(out) || in_.fail(start, std::string("expected ") + what + ", found " + in_.quoted(in_.word()));
}

bool BvhParser::count(std::size_t& out, const char* what) {
    const std::size_t start = in_.skip_blanks();
    double value = 0.0;
    if (!number(value, what)) return false;
    if (value < 0.0 || value > 1e15 || value != std::floor(value))
        return in_.fail(start, std::string("expected ") + what + ", found a number that counts nothing");
    out = static_cast<std::size_t>(value);
    return true;
}

bool BvhParser::hierarchy() {
    if (!expect("HIERARCHY")) return false;
    while (!done_) {
        if (!(open_.empty() ? top_level() : inside_joint())) return false;
    }
    return true;
}

bool BvhParser::top_level() {
    const std::size_t start = in_.skip_blanks();
    const std::string_view found = in_.word();
    if (same_word(found, "ROOT")) return open_joint(false);
    done_ = same_word(found, "MOTION");
    return done_ || in_.fail(start, "expected ROOT or MOTION, found " + in_.quoted(found));
}

bool BvhParser::inside_joint() {
    const std::size_t start = in_.skip_blanks();
    const std::string_view found = in_.word();
    if (found == "}") {
        open_.pop_back();
        return true;
    }
    if (same_word(found, "OFFSET")) return offset();
    if (same_word(found, "CHANNELS")) return channels();
    if (same_word(found, "JOINT")) return open_joint(false);
    if (same_word(found, "END")) return open_joint(true);
    return in_.fail(start, "expected OFFSET, CHANNELS, JOINT, End Site or \"}\" in joint " + in_.quoted(open().name) +
                               ", found " + in_.quoted(found));
}

bool BvhParser::open_joint(bool end_site) {
    const std::string_view name = in_.rest_of_line('{');
    if (open_.size() == max_bvh_depth)
        return in_.fail(in_.place(), "joints stand more than " + std::to_string(max_bvh_depth) + " deep");
    BvhJoint joint;
    joint.parent = open_.empty() ? -1 : open_.back();
    joint.name = end_site ? open().name + "_end" : std::string(name);
    joint.first_channel = file_.channel_count;
    if (!expect("{")) return false;
    open_.push_back(static_cast<int>(file_.joints.size()));
    file_.joints.push_back(std::move(joint));
    return true;
}

bool BvhParser::offset() {
    Vector3& to = open().offset;
    return number(to.x, "an offset") && number(to.y, "an offset") && number(to.z, "an offset");
}

bool BvhParser::channels() {
    BvhJoint& joint = open();
    const std::size_t start = in_.skip_blanks();
    std::size_t wanted = 0;
    if (!count(wanted, "a number of channels")) return false;
    if (!joint.channels.empty())
        return in_.fail(start, "the joint " + in_.quoted(joint.name) + " lists channels twice");
    for (std::size_t i = 0; i < wanted; ++i) {
        const std::size_t place = in_.skip_blanks();
        const std::string_view found = in_.word();
        const auto name = std::ranges::find_if(channel_names, [&](auto known) { return same_word(found, known); });
        if (name == channel_names.end())
            return in_.fail(place, "expected " + std::to_string(wanted) + " channels, found " + std::to_string(i) +
                                       " and " + in_.quoted(found));
        const auto channel = static_cast<BvhJoint::Channel>(name - channel_names.begin());
        if (std::ranges::find(joint.channels, channel) != joint.channels.end())
            return in_.fail(place, "the channel " + in_.quoted(found) + " stands twice");
        joint.channels.push_back(channel);
    }
    joint.first_channel = file_.channel_count;
    file_.channel_count += wanted;
    return true;
}

bool BvhParser::motion() {
    if (!expect("Frames")) return false;
    in_.skip(':');
    if (!count(file_.stated_count, "a number of frames")) return false;
    if (!expect("Frame") || !expect("Time")) return false;
    in_.skip(':');
    return frame_time() && frame_values();
}

// The zeros behind four digits or more ("0.00833330") are none of a rounded number's digits.
std::string_view without_filling(std::string_view number) {
    if (number.find('.') == std::string_view::npos || number.find_first_of("eE") != std::string_view::npos)
        return number;
    const std::size_t last = number.find_last_not_of('0'), first = number.find_first_of("123456789");
    return first < last && last - first >= 3 ? number.substr(0, last + 1) : number;
}

bool BvhParser::frame_time() {
    frame_time_at_ = in_.skip_blanks();
    if (!number(file_.frame_time, "a frame time")) return false;
    const std::string_view written = in_.text().substr(frame_time_at_, in_.place() - frame_time_at_);
    file_.frame_time_step = last_digit_of(without_filling(written));
    return check_frame_time(file_.stated_count);
}

bool BvhParser::check_frame_time(std::size_t frames) {
    const bool still = frames < 2 && file_.frame_time == 0.0;
    if (still || (file_.frame_time >= 1e-6 && file_.frame_time <= 1e3)) return true;
    return in_.fail(frame_time_at_, "a frame time must lie between 0.000001 and 1000 seconds");
}

bool BvhParser::frame_values() {
    // Each number takes at least a digit and a blank, so a false count reserves no more than the file could fill.
    const std::size_t most = (in_.text().size() - in_.place()) / 2 + 1;
    const std::size_t channels = file_.channel_count;
    file_.values.reserve(channels == 0 ? 0 : std::min(file_.stated_count, most / channels) * channels);
    for (in_.skip_blanks(); !in_.at_end(); in_.skip_blanks()) {
        double value = 0.0;
        if (!number(value, "a value of a channel")) return false;
        file_.values.push_back(value);
    }
    return count_frames(file_.values.size()) && check_frame_time(file_.frame_count);
}

// Parts of frames say that the values stand elsewhere than they seem to, so they are no frames to go on with.
bool BvhParser::count_frames(std::size_t found) {
    const std::size_t channels = file_.channel_count;
    file_.frame_count = channels == 0 ? file_.stated_count : found / channels;
    const bool whole = channels == 0 ? found == 0 : found % channels == 0;
    if (whole && (file_.frame_count > 0 || file_.stated_count == 0)) return true;
    std::string what = "wrong frame count: expected " + std::to_string(file_.stated_count) + " frames of " +
                       std::to_string(channels) + " values, found ";
    if (whole) {
        what += "none";
    } else {
        what += std::to_string(found) + " values";
        if (channels != 0) what += " (" + std::to_string(found / channels) + " frames and a part)";
    }
    return in_.fail(in_.place(), what);
}

} // namespace

Result<BvhFile> parse_bvh(std::string_view text, const std::string& path) {
    return BvhParser(text, path).parse();
}

} // namespace headless
