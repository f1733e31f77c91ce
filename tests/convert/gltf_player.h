#pragma once

/// Plays a .glb file with arithmetic of its own, in double precision: where nodes stand, and where vertices are.

#include <nlohmann/json.hpp>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace convert_test {

using Point = std::array<double, 3>;
/// Row by row; a point is a column.
using Matrix = std::array<std::array<double, 4>, 3>;

class GltfPlayer {
public:
    explicit GltfPlayer(std::string_view glb);

    const nlohmann::json& json() const { return json_; }
    /// Index of the node of that name; -1 without one.
    int node(const std::string& name) const;
    std::vector<Matrix> worlds(double time, int animation = 0) const;
    /// The vertices of a node's mesh in the world, morphed and skinned: of its first primitive, whose vertices all
    /// share.
    std::vector<Point> vertices(int node, double time, int animation = 0) const;
    std::vector<double> numbers(int accessor) const;
    int mesh_node(std::size_t occurrence = 0) const; ///< the node that has a mesh

private:
    std::vector<double> value(int node, const std::string& path, double time, int animation) const;

    nlohmann::json json_;
    std::string buffer_;
};

Point apply(const Matrix& matrix, const Point& point);

} // namespace convert_test
