#include "headless/nodes/kinds.h"
#include "headless/nodes/node_kind.h"

#include "headless/animation/rotation_blend.h"

namespace headless {
namespace {

using enum AttributeKind;

TransformValues decomposed(const Matrix& matrix, RotateOrder order) {
    TransformValues out;
    out.order = order;
    set_from_matrix(out, matrix);
    return out;
}

Matrix composed(const Vector3& translate, const Vector3& rotate, RotateOrder order, const Vector3& scale,
                const Vector3& shear, const Quaternion& quaternion, bool by_angles) {
    TransformValues values;
    values.translate = translate;
    values.scale = scale;
    values.shear = shear;
    values.order = order;
    values.rotate = by_angles ? rotate : matrix_to_euler(to_matrix(quaternion), order);
    return local_matrix(values);
}

Matrix chain_product(const Elements& matrices) {
    Matrix out;
    for (const int index : matrices.indices()) out = out * matrices.matrix(index);
    return out;
}

void add_scaled(Matrix& sum, const Matrix& matrix, double weight) {
    for (int r = 0; r < 4; ++r) {
        for (int c = 0; c < 4; ++c) sum.m[r][c] += weight * matrix.m[r][c];
    }
}

Matrix zero_matrix() {
    Matrix out;
    for (int i = 0; i < 4; ++i) out.m[i][i] = 0.0;
    return out;
}

Matrix sum(const Elements& matrices) {
    if (matrices.indices().empty()) return {};
    Matrix out = zero_matrix();
    for (const int index : matrices.indices()) add_scaled(out, matrices.matrix(index), 1.0);
    return out;
}

Matrix weighted_matrix_sum(const Elements& entries) {
    if (entries.indices().empty()) return {};
    Matrix out = zero_matrix();
    for (const int index : entries.indices())
        add_scaled(out, entries.matrix(index, 0), entries.value(index, 1).number());
    return out;
}

// The sixteen numbers of a fourByFourMatrix, row by row.
Value four_by_four(EvaluationContext& context, Node& node, const Plug&) {
    Matrix out;
    const AttributeId first = node.find_attribute("in00");
    for (int i = 0; i < 16; ++i) out.m[i / 4][i % 4] = context.number(node.plug(first + static_cast<AttributeId>(i)));
    return out;
}

} // namespace

void add_matrix_kinds(NodeTypes& types) {
    // clang-format off
    NodeKind(types, "decomposeMatrix", "node", MFn::kPluginDependNode)
        .matrix("inputMatrix", "imat")
        .enumeration("inputRotateOrder", "ro")
        .vector("outputTranslate", "ot", distance).from({"imat"}, [](const Matrix& m) { return m.translation(); })
        .vector("outputRotate", "or", angle).from({"imat", "ro"}, [](const Matrix& m, RotateOrder order) {
            return decomposed(m, order).rotate;
        })
        .vector("outputScale", "os").from({"imat"}, [](const Matrix& m) {
            return decomposed(m, RotateOrder::xyz).scale;
        })
        .vector("outputShear", "osh").from({"imat"}, [](const Matrix& m) {
            return decomposed(m, RotateOrder::xyz).shear;
        })
        .quaternion("outputQuat", "oq").from({"imat"}, [](const Matrix& m) {
            return to_quaternion(euler_to_matrix(decomposed(m, RotateOrder::xyz).rotate, RotateOrder::xyz));
        });
    NodeKind(types, "composeMatrix", "node", MFn::kPluginDependNode)
        .vector("inputTranslate", "it", distance)
        .vector("inputRotate", "ir", angle)
        .enumeration("inputRotateOrder", "ro")
        .vector("inputScale", "is", number, 1.0)
        .vector("inputShear", "ish")
        .quaternion("inputQuat", "iq")
        .boolean("useEulerRotation", "uer", true)
        .matrix("outputMatrix", "omat").from({"it", "ir", "ro", "is", "ish", "iq", "uer"}, composed);
    NodeKind(types, "multMatrix", "node", MFn::kMatrixMult)
        .matrix("matrixIn", "i").array()
        .matrix("matrixSum", "o").from({"i"}, chain_product);
    NodeKind(types, "addMatrix", "node", MFn::kMatrixAdd)
        .matrix("matrixIn", "i").array()
        .matrix("matrixSum", "o").from({"i"}, sum);
    NodeKind(types, "wtAddMatrix", "node", MFn::kMatrixWtAdd)
        .array_of_compounds("wtMatrix", "i").matrix("matrixIn", "m").number("weightIn", "w").end()
        .matrix("matrixSum", "o").from({"i"}, weighted_matrix_sum);
    NodeKind(types, "inverseMatrix", "node", MFn::kPluginDependNode)
        .matrix("inputMatrix", "imat")
        .matrix("outputMatrix", "omat").from({"imat"}, [](const Matrix& m) { return inverse(m); });
    NodeKind(types, "transposeMatrix", "node", MFn::kPluginDependNode)
        .matrix("inputMatrix", "imat")
        .matrix("outputMatrix", "omat").from({"imat"}, [](const Matrix& m) { return transposed(m); });
    NodeKind(types, "holdMatrix", "node", MFn::kMatrixHold)
        .matrix("inMatrix", "i")
        .matrix("outMatrix", "o").from({"i"}, [](const Matrix& m) { return m; });
    NodeKind(types, "passMatrix", "node", MFn::kMatrixPass)
        .matrix("inMatrix", "i")
        .number("inScale", "s", 2.0)
        .matrix("outMatrix", "o").from({"i", "s"}, [](const Matrix& m, double scale) {
            Matrix out = zero_matrix();
            add_scaled(out, m, scale);
            return out;
        });

    NodeKind four(types, "fourByFourMatrix", "node", MFn::kFourByFourMatrix);
    for (int i = 0; i < 16; ++i) {
        const std::string place{static_cast<char>('0' + i / 4), static_cast<char>('0' + i % 4)};
        four.number("in" + place, "i" + place, i % 5 == 0 ? 1.0 : 0.0);
    }
    four.matrix("output", "o").output().computes(four_by_four);
    // clang-format on
}

} // namespace headless
