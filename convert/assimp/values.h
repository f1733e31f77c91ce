#pragma once

#include "convert/affine.h"

#include <assimp/matrix4x4.h>
#include <assimp/quaternion.h>
#include <assimp/types.h>
#include <assimp/vector3.h>

#include <cmath>

namespace vor2::convert {

inline Vec3 vector_of(const aiVector3D& v) {
    return {v.x, v.y, v.z};
}
inline Quat quat_of(const aiQuaternion& q) {
    return normalised(Quat{q.x, q.y, q.z, q.w});
}
inline Affine affine_of(const aiMatrix4x4& m) {
    Affine out;
    for (unsigned r = 0; r < 3; ++r) {
        for (unsigned c = 0; c < 4; ++c) out.m[r][c] = static_cast<double>(m[r][c]);
    }
    return out;
}
inline std::string text_of(const aiString& text) {
    return {text.data, text.length};
}
inline bool is_finite(const Vec3& v) {
    return std::isfinite(v[0]) && std::isfinite(v[1]) && std::isfinite(v[2]);
}

} // namespace vor2::convert
