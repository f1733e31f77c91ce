#pragma once

#include <maya/MColor.h>
#include <maya/MColorArray.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MObject.h>
#include <maya/MObjectArray.h>
#include <maya/MPoint.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>
#include <maya/MVectorArray.h>

class MFloatArray;
class MFloatVectorArray;
class MIntArray;
class MPointArray;
namespace headless {
struct MeshInUse;
}

/// Operations on a mesh as its history makes it at the current time. World space needs a mesh that
/// is given by its path. A set by no name is the current one.
class MFnMesh : public MFnDagNode {
public:
    MFnMesh() {}
    MFnMesh(MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnMesh(const MObject& object, MStatus* status = nullptr) { attach(object, status); }
    MFnMesh(const MDagPath& path, MStatus* status = nullptr) { attach(path, status); }
    MFn::Type type() const override { return MFn::kMesh; }

    int numVertices(MStatus* status = nullptr) const;
    int numEdges(MStatus* status = nullptr) const;
    int numPolygons(MStatus* status = nullptr) const;
    int numFaceVertices(MStatus* status = nullptr) const;
    int polygonVertexCount(int polygonId, MStatus* status = nullptr) const;
    MStatus getPolygonVertices(int polygonId, MIntArray& vertexList) const;
    MStatus getVertices(MIntArray& vertexCount, MIntArray& vertexList) const;
    MStatus getEdgeVertices(int edgeId, int2& vertexList) const;
    bool isEdgeSmooth(int edgeId, MStatus* status = nullptr) const;
    /// How many triangles each polygon gives, and three vertices for each of them.
    MStatus getTriangles(MIntArray& triangleCounts, MIntArray& triangleVertices) const;

    /// The same with places in the list that `getVertices` gives instead of vertices.
    MStatus getTriangleOffsets(MIntArray& triangleCounts, MIntArray& triangleIndices) const;

    MStatus getPoints(MPointArray& vertexArray, MSpace::Space space = MSpace::kObject) const;
    MStatus getPoint(int vertexId, MPoint& pos, MSpace::Space space = MSpace::kObject) const;
    /// One a vertex: the mean of its faces' by area and angle, or of those that were set.
    MStatus getNormals(MFloatVectorArray& normals, MSpace::Space space = MSpace::kObject) const;
    /// One for each vertex of a face: apart where edges are hard or normals were set.
    MStatus getFaceVertexNormals(int faceIndex, MFloatVectorArray& normals,
                                 MSpace::Space space = MSpace::kObject) const;
    /// One a vertex: the mean of its corners'. Where none has a colour, `defaultUnsetColor`, or -1 in all four without.
    MStatus getVertexColors(MColorArray& colors, const MString* colorSet = nullptr,
                            const MColor* defaultUnsetColor = nullptr);
    /// One for each vertex of each face, in order of the faces.
    MStatus getFaceVertexColors(MColorArray& colors, const MString* colorSet = nullptr,
                                const MColor* defaultUnsetColor = nullptr);
    int numColorSets(MStatus* status = nullptr) const;
    MString currentColorSetName(int instance = -1, MStatus* status = nullptr) const;
    MStatus getColorSetNames(MStringArray& setNames) const;

    int numUVSets(MStatus* status = nullptr) const;
    MStatus getUVSetNames(MStringArray& setNames) const;
    int numUVs(MStatus* status = nullptr) const;
    int numUVs(const MString& uvSet, MStatus* status = nullptr) const;
    MStatus getUV(int uvId, float& u, float& v, const MString* uvSet = nullptr) const;
    MStatus getUVs(MFloatArray& uArray, MFloatArray& vArray, const MString* uvSet = nullptr) const;
    MStatus getPolygonUVid(int polygonId, int vertexIndex, int& uvId, const MString* uvSet = nullptr) const;

    /// How many vertices of each face have a UV, all or none, and which.
    MStatus getAssignedUVs(MIntArray& uvCounts, MIntArray& uvIds, const MString* uvSet = nullptr) const;

    /// The shading groups of an instance, and for each polygon which of them it is in, or -1.
    MStatus getConnectedShaders(unsigned int instanceNumber, MObjectArray& shaders, MIntArray& indices) const;

private:
    MFnMesh(const MFnMesh&);
    MFnMesh& operator=(const MFnMesh&);
    MFnMesh* operator&() const;

    friend struct headless::Access;
    mutable headless::Held<headless::MeshInUse> mesh_; // as last asked for: calls come by the corner
};
