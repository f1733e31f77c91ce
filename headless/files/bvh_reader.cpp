#include "headless/files/bvh_reader.h"

#include "headless/animation/keying.h"
#include "headless/files/bvh_file.h"
#include "headless/files/frame_rate.h"
#include "headless/files/text_file.h"
#include "headless/session.h"

#include <algorithm>
#include <numbers>

namespace headless {
namespace {

using Channel = BvhJoint::Channel;

bool is_rotation(Channel channel) {
    return channel >= Channel::x_rotation;
}

int axis_of(Channel channel) {
    return static_cast<int>(channel) % 3;
}

// The first channel listed is the outermost rotation, so it acts last; axes that have no channel may act anywhere.
RotateOrder rotate_order_of(const BvhJoint& joint) {
    std::string letters;
    for (const Channel channel : joint.channels) {
        if (is_rotation(channel)) letters.insert(letters.begin(), "xyz"[axis_of(channel)]);
    }
    for (const char axis : {'x', 'y', 'z'}) {
        if (letters.find(axis) == std::string::npos) letters += axis;
    }
    constexpr std::string_view orders[] = {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"};
    return rotate_order(std::ranges::find(orders, letters) - std::begin(orders));
}

// What was (x, y, z) becomes (x, z, -y): a rotation about Y is one about -Z then, and one about Z is one about Y.
void turn_upright(BvhFile& file) {
    for (BvhJoint& joint : file.joints) {
        joint.offset = {joint.offset.x, joint.offset.z, -joint.offset.y};
        for (std::size_t i = 0; i < joint.channels.size(); ++i) {
            const int axis = axis_of(joint.channels[i]);
            if (axis == 0) continue;
            joint.channels[i] = static_cast<Channel>(static_cast<int>(joint.channels[i]) + (axis == 1 ? 1 : -1));
            if (axis == 2) continue;
            for (std::size_t at = joint.first_channel + i; at < file.values.size(); at += file.channel_count)
                file.values[at] = -file.values[at];
        }
    }
}

class BvhBuilder {
public:
    BvhBuilder(Scene& scene, const BvhFile& file, const BvhOptions& options)
        : scene_(scene), file_(file), options_(options), rate_(frame_rate(file.frame_time, file.frame_time_step)) {}

    Result<void> build();

private:
    Result<void> add_joint(const BvhJoint& joint);
    Result<void> add_curve(Node& node, const BvhJoint& joint, std::size_t channel);
    double converted(Channel channel, double value) const;
    void set_time_and_range();
    void remove_what_was_made();

    Scene& scene_;
    const BvhFile& file_;
    const BvhOptions& options_;
    FrameRate rate_;
    std::vector<Node*> joints_, curves_;
    KeyTimes times_; // of every curve
};

Result<void> BvhBuilder::build() {
    const bool fresh = std::ranges::all_of(scene_.nodes(), [](const Node* node) { return node->default_node(); });
    // Without channels the count of frames is held against nothing in the file.
    std::vector<double> times(file_.channel_count == 0 ? 0 : file_.frame_count);
    for (std::size_t i = 0; i < times.size(); ++i) times[i] = static_cast<double>(i) / rate_.per_second;
    times_ = KeyTimes(std::move(times));
    for (const BvhJoint& joint : file_.joints) {
        if (Result<void> done = add_joint(joint); !done) {
            remove_what_was_made();
            return done;
        }
    }
    if (fresh) set_time_and_range();
    return {};
}

Result<void> BvhBuilder::add_joint(const BvhJoint& joint) {
    Node* parent = joint.parent < 0 ? nullptr : joints_[static_cast<std::size_t>(joint.parent)];
    const Result<Node*> made = scene_.create_node("joint", legal_name(joint.name), parent);
    if (!made) return made.error();
    Node& node = **made;
    joints_.push_back(&node);
    const TransformAttributes& ids = TransformAttributes::ids();
    node.set(node.plug(ids.translate).key, joint.offset * options_.unit_in_centimetres);
    const RotateOrder order = rotate_order_of(joint);
    if (order != RotateOrder::xyz) node.set(node.plug(ids.rotate_order).key, static_cast<int>(order));
    if (file_.frame_count == 0) return {};
    for (std::size_t i = 0; i < joint.channels.size(); ++i) {
        if (Result<void> done = add_curve(node, joint, i); !done) return done;
    }
    return {};
}

double BvhBuilder::converted(Channel channel, double value) const {
    return is_rotation(channel) ? value * (std::numbers::pi / 180.0) : value * options_.unit_in_centimetres;
}

Result<void> BvhBuilder::add_curve(Node& node, const BvhJoint& joint, std::size_t channel) {
    const Channel kind = joint.channels[channel];
    const TransformAttributes& ids = TransformAttributes::ids();
    const AttributeId vector = is_rotation(kind) ? ids.rotate : ids.translate;
    const AttributeId id = node.attribute(vector).children[static_cast<std::size_t>(axis_of(kind))];
    std::vector<double> values(file_.frame_count);
    const double* value = file_.values.data() + joint.first_channel + channel;
    for (double& out : values) {
        out = converted(kind, *value);
        value += file_.channel_count;
    }
    const Result<Node*> curve = set_keys(scene_, node.plug(id), times_, std::move(values), Tangent::linear);
    if (!curve) return curve.error();
    curves_.push_back(*curve);
    return {};
}

void BvhBuilder::set_time_and_range() {
    scene_.time_unit = rate_.unit;
    const double last = file_.frame_count == 0 ? 0.0 : static_cast<double>(file_.frame_count - 1) / rate_.per_second;
    scene_.playback = {0.0, last, 0.0, last};
    scene_.set_current_time(0.0);
}

void BvhBuilder::remove_what_was_made() {
    for (Node* curve : curves_) scene_.remove_node(*curve);
    for (std::size_t i = joints_.size(); i-- > 0;) scene_.remove_node(*joints_[i]);
}

} // namespace

Result<void> read_bvh_text(Scene& scene, std::string_view text, const std::string& path, const BvhOptions& options) {
    Result<BvhFile> file = parse_bvh(text, path);
    if (!file) return file.error();
    if (options.z_is_up) turn_upright(*file);
    Result<void> done = BvhBuilder(scene, *file, options).build();
    if (done && file->frame_count != file->stated_count)
        Session::current().warning(path + ": the file says that it has " + std::to_string(file->stated_count) +
                                   " frames and has " + std::to_string(file->frame_count));
    return done;
}

Result<void> read_bvh(Scene& scene, const std::string& path, const BvhOptions& options) {
    const Result<std::string> text = read_text_file(path);
    if (!text) return text.error();
    return read_bvh_text(scene, *text, path, options);
}

} // namespace headless
