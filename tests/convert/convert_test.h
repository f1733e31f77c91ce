#pragma once

#include "convert/gltf_reader.h"
#include "convert/gltf_writer.h"
#include "tests/convert/gltf_player.h"

#include <gtest/gtest.h>

#include <optional>

namespace convert_test {

using namespace VOR2_LOADER;
using namespace vor2::convert;

/// A shared scene file; nothing where there is none.
std::optional<std::vector<std::uint8_t>> shared_file(const std::string& name);

/// The scene as a .glb; fails the test when it can't be written.
std::string glb_of(VOR2& scene, const GltfOptions& options = {}, Report* report = nullptr);
/// A .glb or .gltf as a scene, with its first animation.
void scene_of(std::string_view gltf, VOR2& scene, const std::string& beside = {});

/// Where the library has the nodes of a scene at a time, in glTF's space.
std::vector<Point> node_points(VOR2& scene, double time);
std::vector<Point> vertex_points(const VOR2_TRI_OBJECT& mesh, const VOR2& scene, bool in_world);

/// The largest distance of two points at the same place in the lists; fails the test when the lists differ in length.
double distance(const std::vector<Point>& a, const std::vector<Point>& b);
double size_of(const std::vector<Point>& points);

/// "root", and under it "arm" and "hand", which move, turn (once the long way round) and grow between 1 and 3 seconds;
/// a skinned strip with up to five joints a vertex; a morphing triangle; a plain one with two materials.
VOR2 busy_scene();

} // namespace convert_test
