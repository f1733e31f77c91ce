#pragma once

#include "headless/geometry/mesh.h"

namespace headless {

/// Cuts the chosen faces (all of them where `chosen` is empty) `times` over into quads about a middle point. Points of
/// the mesh keep their numbers; those on edges and in faces follow. A neighbour that isn't chosen gets the points on
/// its edges. Holed faces and faces of fewer than three corners stay. Edges are made anew.
/// Divisions that would go beyond `MeshLimits::divided_corners` are left out and noted.
void divide_faces(Mesh& mesh, const std::vector<bool>& chosen, std::int64_t times);

/// Moves points, and normals that were set by hand.
void transform_mesh(Mesh& mesh, const Matrix& matrix);

/// One colour that a node gives to a vertex, or to a vertex in one face (`face` -1 for all).
struct VertexColour {
    int vertex = 0, face = -1;
    Float4 colour;
};
/// Lays colours over a mesh's set of that name, made where there is none; it becomes the current one. Colours of
/// corners come before those of whole vertices. Vertices and faces that aren't there are passed over.
void colour_vertices(Mesh& mesh, const std::string& set_name, const std::vector<VertexColour>& colours);

} // namespace headless
