#pragma once

/// What the parts of the writer share.

#include "convert/axes.h"
#include "convert/gltf/buffers.h"
#include "convert/gltf_writer.h"
#include "convert/picture.h"

#include <map>

namespace vor2::convert {

/// An image of the file; -1 where a picture isn't there.
struct GltfImage {
    int index = -1;
    PictureAlpha alpha = PictureAlpha::none; ///< of one that was made of two pictures
};

struct GltfWork {
    explicit GltfWork(const GltfOptions& given_options, Report& given_report)
        : options(given_options), report(given_report), buffers(model) {}

    const GltfOptions& options;
    Report& report;
    tinygltf::Model model;
    GltfBuffers buffers;
    std::map<std::string, GltfImage> images; ///< by the name that the scene has for the picture

    int add_node(tinygltf::Node node) {
        model.nodes.push_back(std::move(node));
        return static_cast<int>(model.nodes.size() - 1);
    }
    [[nodiscard]] tinygltf::Node& node(int index) { return model.nodes[static_cast<std::size_t>(index)]; }
};

/// A scene on its way into the file.
struct GltfScene {
    VOR2_LOADER::VOR2& scene;
    float start = 0;        ///< the first time that is shown
    std::vector<Axes> axes; ///< of each hierarchy node
    std::vector<int> nodes; ///< the file's node of each hierarchy node
    std::vector<int> materials;
    int parent = -1; ///< the file's node that the scene hangs under; -1 for the top
    std::vector<std::pair<int, const VOR2_LOADER::VOR2_MORPH_MESH*>> morphing; ///< the file's nodes with moving weights
    std::vector<std::pair<int, std::vector<float>>> posed; ///< the file's nodes that show a target at each of the times

    /// The axes of the node that an object stands at, and the file's node; an object whose index names none stands at
    /// the top.
    [[nodiscard]] int node_at(std::uint32_t matrix_index) const {
        return matrix_index < nodes.size() ? nodes[matrix_index] : parent;
    }
    [[nodiscard]] Axes axes_at(std::uint32_t matrix_index) const {
        return matrix_index < axes.size() ? axes[matrix_index] : Axes::mirrored;
    }
};

/// Hangs a node under another, or at the top.
void hang(GltfWork& work, int node, int parent);

/// When a scene begins: the start of its time range, or later where a lead-in stands before it that only says how
/// skinned meshes are bound (`convert/scene_builder.h`).
float first_time(const VOR2_LOADER::VOR2& scene);

} // namespace vor2::convert
