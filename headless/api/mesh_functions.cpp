// The shape of MFnMesh: points, polygons, normals.
#include "headless/api/access.h"
#include "headless/api/held.h"
#include "headless/geometry/mesh_data.h"
#include "headless/geometry/mesh_history.h"
#include "headless/geometry/triangulation.h"

#include <maya/MFloatVectorArray.h>
#include <maya/MIntArray.h>
#include <maya/MPointArray.h>

using namespace headless;

/// The mesh that a function set was last asked about, while the scene is what it was then.
struct headless::MeshInUse {
    NodeHandle node;
    std::uint64_t generation = 0;
    std::shared_ptr<const Mesh> mesh;
    std::shared_ptr<const Mesh> with_normals; ///< of which `corner_normals` are
    std::vector<Float3> corner_normals{};
};
template class headless::Held<headless::MeshInUse>;

namespace {

// From object space into another; nothing when it needs a path and has none.
std::optional<Matrix> to_space(const MFnMesh& mesh, MSpace::Space space) {
    if (space != MSpace::kWorld && space != MSpace::kPostTransform) return Matrix();
    MDagPath path;
    if (!mesh.getPath(path)) return {};
    Scene& scene = Access::scene();
    if (space == MSpace::kWorld) return EvaluationContext(scene).world_matrix(Access::path(path));
    if (!path.pop()) return {};
    Node* transform = Access::node(path);
    return transform ? std::optional<Matrix>(scene.local_matrix(*transform)) : std::nullopt;
}

MPoint moved(const Float3& point, const Matrix& matrix) {
    return MPoint(vector(transform_point(wide(point), matrix)));
}

} // namespace

const Mesh* Access::mesh(const MFnMesh& functions) {
    Scene& scene = Access::scene();
    Node* const shape = node(functions);
    MeshInUse& held = *functions.mesh_;
    if (const DataObject* data = shape ? nullptr : Access::data(object(functions))) {
        const NodeHandle self = handle(object(functions));
        if (held.mesh && held.generation == scene.generation() && held.node == self) return held.mesh.get();
        held.mesh = mesh_at(scene, {scene.find(data->node), data->key});
        held.node = self;
        held.generation = scene.generation();
        return held.mesh.get();
    }
    if (!shape) return nullptr;
    if (held.mesh && held.generation == scene.generation() && held.node == shape->handle()) return held.mesh.get();
    held.mesh = mesh_of(scene, *shape);
    held.node = shape->handle();
    held.generation = scene.generation();
    if (!held.mesh) return nullptr;
    std::vector<std::string>& told = MeshData::of(*shape)->evaluated.told;
    if (told != held.mesh->notes) {
        told = held.mesh->notes;
        for (const std::string& note : told) Session::current().warning("Mesh '" + shape->name() + "': " + note);
    }
    return held.mesh.get();
}

int MFnMesh::numVertices(MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    return mesh ? succeed(status, static_cast<int>(mesh->points.size())) : fail(status, 0);
}

int MFnMesh::numEdges(MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    return mesh ? succeed(status, static_cast<int>(mesh->edges.size())) : fail(status, 0);
}

int MFnMesh::numPolygons(MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    return mesh ? succeed(status, static_cast<int>(mesh->face_count())) : fail(status, 0);
}

int MFnMesh::numFaceVertices(MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    return mesh ? succeed(status, static_cast<int>(mesh->corner_vertex.size())) : fail(status, 0);
}

int MFnMesh::polygonVertexCount(int polygonId, MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return fail(status, 0);
    const auto face = static_cast<std::size_t>(polygonId);
    if (polygonId < 0 || face >= mesh->face_count()) return fail(status, 0, MStatus::kInvalidParameter);
    return succeed(status, static_cast<int>(mesh->corner_count(face)));
}

MStatus MFnMesh::getPolygonVertices(int polygonId, MIntArray& vertexList) const {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return MStatus::kFailure;
    const auto face = static_cast<std::size_t>(polygonId);
    if (polygonId < 0 || face >= mesh->face_count()) return MStatus::kInvalidParameter;
    const auto vertices = mesh->vertices_of(face);
    vertexList = MIntArray(vertices.data(), static_cast<unsigned int>(vertices.size()));
    return MStatus::kSuccess;
}

MStatus MFnMesh::getVertices(MIntArray& vertexCount, MIntArray& vertexList) const {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return MStatus::kFailure;
    vertexCount.setLength(static_cast<unsigned int>(mesh->face_count()));
    for (unsigned int face = 0; face < vertexCount.length(); ++face)
        vertexCount[face] = static_cast<int>(mesh->corner_count(face));
    vertexList = MIntArray(mesh->corner_vertex.data(), static_cast<unsigned int>(mesh->corner_vertex.size()));
    return MStatus::kSuccess;
}

MStatus MFnMesh::getEdgeVertices(int edgeId, int2& vertexList) const {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return MStatus::kFailure;
    if (edgeId < 0 || static_cast<std::size_t>(edgeId) >= mesh->edges.size()) return MStatus::kInvalidParameter;
    const MeshEdge& edge = mesh->edges[static_cast<std::size_t>(edgeId)];
    vertexList[0] = edge.from;
    vertexList[1] = edge.to;
    return MStatus::kSuccess;
}

bool MFnMesh::isEdgeSmooth(int edgeId, MStatus* status) const {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return fail(status, false);
    if (edgeId < 0 || static_cast<std::size_t>(edgeId) >= mesh->edges.size())
        return fail(status, false, MStatus::kInvalidParameter);
    return succeed(status, mesh->edges[static_cast<std::size_t>(edgeId)].smooth);
}

MStatus MFnMesh::getTriangles(MIntArray& triangleCounts, MIntArray& triangleVertices) const {
    const MStatus status = getTriangleOffsets(triangleCounts, triangleVertices);
    const Mesh* mesh = Access::mesh(*this);
    for (unsigned int i = 0; mesh && status && i < triangleVertices.length(); ++i)
        triangleVertices[i] = mesh->corner_vertex[static_cast<std::size_t>(triangleVertices[i])];
    return status;
}

MStatus MFnMesh::getTriangleOffsets(MIntArray& triangleCounts, MIntArray& triangleIndices) const {
    const Mesh* mesh = Access::mesh(*this);
    if (!mesh) return MStatus::kFailure;
    Triangulation triangulation(*mesh);
    std::vector<std::size_t> corners;
    triangleCounts.setLength(static_cast<unsigned int>(mesh->face_count()));
    for (unsigned int face = 0; face < triangleCounts.length(); ++face) {
        const std::size_t before = corners.size();
        triangulation.face(face, corners);
        triangleCounts[face] = static_cast<int>((corners.size() - before) / 3);
    }
    triangleIndices.setLength(static_cast<unsigned int>(corners.size()));
    for (unsigned int i = 0; i < triangleIndices.length(); ++i) triangleIndices[i] = static_cast<int>(corners[i]);
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPoints(MPointArray& vertexArray, MSpace::Space space) const {
    const Mesh* mesh = Access::mesh(*this);
    const auto matrix = mesh ? to_space(*this, space) : std::nullopt;
    if (!matrix) return MStatus::kFailure;
    vertexArray.setLength(static_cast<unsigned int>(mesh->points.size()));
    for (unsigned int i = 0; i < vertexArray.length(); ++i) vertexArray[i] = moved(mesh->points[i], *matrix);
    return MStatus::kSuccess;
}

MStatus MFnMesh::getPoint(int vertexId, MPoint& pos, MSpace::Space space) const {
    const Mesh* mesh = Access::mesh(*this);
    const auto matrix = mesh ? to_space(*this, space) : std::nullopt;
    if (!matrix) return MStatus::kFailure;
    if (vertexId < 0 || static_cast<std::size_t>(vertexId) >= mesh->points.size()) return MStatus::kInvalidParameter;
    pos = moved(mesh->points[static_cast<std::size_t>(vertexId)], *matrix);
    return MStatus::kSuccess;
}

namespace {

// Brings normals from a mesh's own space into another.
class NormalsInSpace {
public:
    NormalsInSpace(const Matrix& to, MSpace::Space space)
        : turned_(transposed(inverse(to))), own_(space != MSpace::kWorld && space != MSpace::kPostTransform) {}
    MFloatVector of(const Float3& normal) const {
        const Float3 n = own_ ? normal : unit_or_up(transform_direction(wide(normal), turned_));
        return MFloatVector(n.x, n.y, n.z);
    }

private:
    Matrix turned_;
    bool own_;
};

} // namespace

MStatus MFnMesh::getNormals(MFloatVectorArray& normals, MSpace::Space space) const {
    const Mesh* mesh = Access::mesh(*this);
    const auto matrix = mesh ? to_space(*this, space) : std::nullopt;
    if (!matrix) return MStatus::kFailure;
    const std::vector<Float3> found = vertex_normals(*mesh);
    const NormalsInSpace there(*matrix, space);
    normals.setLength(static_cast<unsigned int>(found.size()));
    for (unsigned int i = 0; i < normals.length(); ++i) normals[i] = there.of(found[i]);
    return MStatus::kSuccess;
}

MStatus MFnMesh::getFaceVertexNormals(int faceIndex, MFloatVectorArray& normals, MSpace::Space space) const {
    const Mesh* mesh = Access::mesh(*this);
    const auto matrix = mesh ? to_space(*this, space) : std::nullopt;
    if (!matrix) return MStatus::kFailure;
    const auto face = static_cast<std::size_t>(faceIndex);
    if (faceIndex < 0 || face >= mesh->face_count()) return MStatus::kInvalidParameter;
    MeshInUse& held = *mesh_;
    if (held.with_normals != held.mesh) {
        held.corner_normals = normals_of_corners(*mesh);
        held.with_normals = held.mesh;
    }
    const NormalsInSpace there(*matrix, space);
    normals.setLength(static_cast<unsigned int>(mesh->corner_count(face)));
    for (unsigned int i = 0; i < normals.length(); ++i)
        normals[i] = there.of(held.corner_normals[mesh->face_start[face] + i]);
    return MStatus::kSuccess;
}
