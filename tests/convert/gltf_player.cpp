#include "tests/convert/gltf_player.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <map>

namespace convert_test {
namespace {

using Json = nlohmann::json;

Matrix product(const Matrix& a, const Matrix& b) {
    Matrix out{};
    for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t c = 0; c < 4; ++c) {
            for (std::size_t k = 0; k < 3; ++k) out[r][c] += a[r][k] * b[k][c];
            if (c == 3) out[r][c] += a[r][3];
        }
    }
    return out;
}

Matrix matrix_of(const std::vector<double>& t, const std::vector<double>& q, const std::vector<double>& s) {
    const double x = q[0], y = q[1], z = q[2], w = q[3];
    return {{{(1 - 2 * (y * y + z * z)) * s[0], 2 * (x * y - w * z) * s[1], 2 * (x * z + w * y) * s[2], t[0]},
             {2 * (x * y + w * z) * s[0], (1 - 2 * (x * x + z * z)) * s[1], 2 * (y * z - w * x) * s[2], t[1]},
             {2 * (x * z - w * y) * s[0], 2 * (y * z + w * x) * s[1], (1 - 2 * (x * x + y * y)) * s[2], t[2]}}};
}

/// By the shorter arc.
std::vector<double> turned(std::vector<double> a, std::vector<double> b, double t) {
    double cosine = 0;
    for (std::size_t i = 0; i < 4; ++i) cosine += a[i] * b[i];
    const double sign = cosine < 0 ? -1 : 1, angle = std::acos(std::min(1.0, std::abs(cosine)));
    const double from = angle < 1e-7 ? 1 - t : std::sin((1 - t) * angle) / std::sin(angle);
    const double to = angle < 1e-7 ? t : std::sin(t * angle) / std::sin(angle);
    for (std::size_t i = 0; i < 4; ++i) a[i] = from * a[i] + sign * to * b[i];
    return a;
}

} // namespace

Point apply(const Matrix& m, const Point& p) {
    Point out{};
    for (std::size_t r = 0; r < 3; ++r) out[r] = m[r][0] * p[0] + m[r][1] * p[1] + m[r][2] * p[2] + m[r][3];
    return out;
}

GltfPlayer::GltfPlayer(std::string_view glb) {
    std::uint32_t length = 0;
    std::memcpy(&length, glb.data() + 12, 4);
    json_ = Json::parse(glb.substr(20, length));
    if (glb.size() > 28 + length) buffer_ = glb.substr(28 + length);
}

int GltfPlayer::node(const std::string& name) const {
    for (std::size_t i = 0; i < json_["nodes"].size(); ++i) {
        if (json_["nodes"][i].value("name", "") == name) return static_cast<int>(i);
    }
    return -1;
}

int GltfPlayer::mesh_node(std::size_t occurrence) const {
    for (std::size_t i = 0; i < json_["nodes"].size(); ++i) {
        if (json_["nodes"][i].contains("mesh") && occurrence-- == 0) return static_cast<int>(i);
    }
    return -1;
}

std::vector<double> GltfPlayer::numbers(int index) const {
    const Json& accessor = json_["accessors"][static_cast<std::size_t>(index)];
    const std::map<std::string, std::size_t> widths{{"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4}, {"MAT4", 16}};
    const std::size_t width = widths.at(accessor["type"]), count = accessor["count"];
    std::vector<double> out(width * count);
    const auto read = [this](std::size_t view_index, std::size_t offset, int type, bool normalised, std::size_t wide,
                             std::size_t i) {
        const Json& view = json_["bufferViews"][view_index];
        const std::size_t size = type <= 5121 ? 1 : type <= 5123 ? 2 : 4;
        const std::size_t stride = view.value("byteStride", size * wide);
        const char* at =
            buffer_.data() + view.value("byteOffset", std::size_t{0}) + offset + i / wide * stride + i % wide * size;
        const double most = normalised ? (type == 5121 ? 255.0 : 65535.0) : 1.0;
        if (type == 5126) {
            float number = 0;
            std::memcpy(&number, at, 4);
            return static_cast<double>(number);
        }
        std::uint32_t number = 0;
        std::memcpy(&number, at, size);
        return number / most;
    };
    for (std::size_t i = 0; accessor.contains("bufferView") && i < out.size(); ++i)
        out[i] = read(accessor["bufferView"], accessor.value("byteOffset", std::size_t{0}), accessor["componentType"],
                      accessor.value("normalized", false), width, i);
    if (!accessor.contains("sparse")) return out;
    const Json& sparse = accessor["sparse"];
    for (std::size_t i = 0; i < sparse["count"]; ++i) {
        const auto place = static_cast<std::size_t>(read(sparse["indices"]["bufferView"],
                                                         sparse["indices"].value("byteOffset", std::size_t{0}),
                                                         sparse["indices"]["componentType"], false, 1, i));
        for (std::size_t k = 0; k < width; ++k)
            out[place * width + k] =
                read(sparse["values"]["bufferView"], sparse["values"].value("byteOffset", std::size_t{0}),
                     accessor["componentType"], false, width, i * width + k);
    }
    return out;
}

std::vector<double> GltfPlayer::value(int node, const std::string& path, double time, int animation) const {
    const Json& own = json_["nodes"][static_cast<std::size_t>(node)];
    std::vector<double> still;
    if (path == "translation") still = {0, 0, 0};
    if (path == "rotation") still = {0, 0, 0, 1};
    if (path == "scale") still = {1, 1, 1};
    if (path == "weights") still = json_["meshes"][static_cast<std::size_t>(own["mesh"])].value("weights", still);
    still = own.value(path, still);
    if (!json_.contains("animations")) return still;
    const Json& played = json_["animations"][static_cast<std::size_t>(animation)];
    for (const Json& channel : played["channels"]) {
        if (channel["target"]["node"] != node || channel["target"]["path"] != path) continue;
        const Json& sampler = played["samplers"][static_cast<std::size_t>(channel["sampler"])];
        const std::vector<double> times = numbers(sampler["input"]), values = numbers(sampler["output"]);
        const std::size_t width = values.size() / times.size();
        const auto key = [&](std::size_t k) {
            return std::vector<double>(values.begin() + static_cast<long>(k * width),
                                       values.begin() + static_cast<long>((k + 1) * width));
        };
        if (time <= times.front()) return key(0);
        if (time >= times.back()) return key(times.size() - 1);
        const auto after = static_cast<std::size_t>(std::upper_bound(times.begin(), times.end(), time) - times.begin());
        const double t = (time - times[after - 1]) / (times[after] - times[after - 1]);
        std::vector<double> from = key(after - 1), to = key(after);
        if (path == "rotation") return turned(from, to, t);
        for (std::size_t i = 0; i < width; ++i) from[i] += (to[i] - from[i]) * t;
        return from;
    }
    return still;
}

std::vector<Matrix> GltfPlayer::worlds(double time, int animation) const {
    const std::size_t count = json_["nodes"].size();
    std::vector<int> parents(count, -1);
    for (std::size_t i = 0; i < count; ++i) {
        for (const Json& child : json_["nodes"][i].value("children", Json::array()))
            parents[static_cast<std::size_t>(child)] = static_cast<int>(i);
    }
    std::vector<Matrix> out(count);
    std::vector<bool> done(count);
    const std::function<void(std::size_t)> place = [&](std::size_t i) {
        if (done[i]) return;
        done[i] = true;
        const int node = static_cast<int>(i);
        const Json& own = json_["nodes"][i];
        if (own.contains("matrix")) {
            for (std::size_t k = 0; k < 16; ++k) {
                if (k % 4 < 3) out[i][k % 4][k / 4] = own["matrix"][k];
            }
        }
        if (!own.contains("matrix"))
            out[i] = matrix_of(value(node, "translation", time, animation), value(node, "rotation", time, animation),
                               value(node, "scale", time, animation));
        if (parents[i] < 0) return;
        place(static_cast<std::size_t>(parents[i]));
        out[i] = product(out[static_cast<std::size_t>(parents[i])], out[i]);
    };
    for (std::size_t i = 0; i < count; ++i) place(i);
    return out;
}

std::vector<Point> GltfPlayer::vertices(int node, double time, int animation) const {
    const std::vector<Matrix> all = worlds(time, animation);
    const Json& own = json_["nodes"][static_cast<std::size_t>(node)];
    const Json& primitive = json_["meshes"][static_cast<std::size_t>(own["mesh"])]["primitives"][0];
    const Json& attributes = primitive["attributes"];
    std::vector<double> positions = numbers(attributes["POSITION"]);
    if (primitive.contains("targets")) {
        const std::vector<double> weights = value(node, "weights", time, animation);
        for (std::size_t t = 0; t < weights.size(); ++t) {
            const std::vector<double> offsets = numbers(primitive["targets"][t]["POSITION"]);
            for (std::size_t i = 0; i < positions.size(); ++i) positions[i] += offsets[i] * weights[t];
        }
    }
    std::vector<Point> out;
    if (!own.contains("skin")) {
        for (std::size_t v = 0; v < positions.size(); v += 3)
            out.push_back(
                apply(all[static_cast<std::size_t>(node)], {positions[v], positions[v + 1], positions[v + 2]}));
        return out;
    }
    const Json& skin = json_["skins"][static_cast<std::size_t>(own["skin"])];
    const std::vector<double> inverses = numbers(skin["inverseBindMatrices"]);
    out.assign(positions.size() / 3, Point{0, 0, 0});
    for (int set = 0; attributes.contains("JOINTS_" + std::to_string(set)); ++set) {
        const std::vector<double> joints = numbers(attributes["JOINTS_" + std::to_string(set)]),
                                  weights = numbers(attributes["WEIGHTS_" + std::to_string(set)]);
        for (std::size_t i = 0; i < joints.size(); ++i) {
            const auto joint = static_cast<std::size_t>(joints[i]);
            Matrix inverse{};
            for (std::size_t c = 0; c < 4; ++c) {
                for (std::size_t r = 0; r < 3; ++r) inverse[r][c] = inverses[16 * joint + 4 * c + r];
            }
            const std::size_t v = i / 4;
            const Point there = apply(product(all[static_cast<std::size_t>(skin["joints"][joint])], inverse),
                                      {positions[3 * v], positions[3 * v + 1], positions[3 * v + 2]});
            for (std::size_t k = 0; k < 3; ++k) out[v][k] += there[k] * weights[i];
        }
    }
    return out;
}

} // namespace convert_test
