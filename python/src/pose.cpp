#include "format/vor2.h"
#include "python/src/work.h"

#include <cmath>
#include <cstring>

namespace vor2::python {

using namespace VOR2_LOADER;

namespace {

/// Puts right what a script may have left behind: links between the parts of a scene.
void settle(VOR2& scene) { // NOLINT(misc-no-recursion): no deeper than scripts put scenes into scenes
    scene.matrix_hierarchy.link_parents();
    for (const OWNED<VOR2_BEZIER_SPLINE_OBJECT>& object : scene.bezier_spline_objects) {
        if (!object) continue;
        for (VOR2_RIGID_BEZIER_SPLINE& spline : object->rigid_splines) spline.link_curves();
        for (VOR2_ANIM_BEZIER_SPLINE& spline : object->anim_splines) spline.link_curves();
    }
    const auto settle_all = [](const auto& references) {
        for (const auto& reference : references) {
            if (reference && reference->scene) settle(*reference->scene);
        }
    };
    settle_all(scene.xrefs_15);
    settle_all(scene.xrefs_20);
}

void prepare(VOR2& scene) { // NOLINT(misc-no-recursion)
    scene.prepare_weighted_meshes();
    const auto prepare_all = [](const auto& references) {
        for (const auto& reference : references) {
            if (reference && reference->scene) prepare(*reference->scene);
        }
    };
    prepare_all(scene.xrefs_15);
    prepare_all(scene.xrefs_20);
}

py::array floats(std::vector<py::ssize_t> shape) {
    return py::array(py::dtype("f4"), std::move(shape));
}

/// The vertices of a mesh at the time that the clock stands at; (0, 0, 0) where a vertex has none.
py::array vertices(const VOR2_TRI_OBJECT& mesh, void (VOR2_VERT::*get)(VECTOR_3&) const) {
    py::array made = floats({mesh.vertex_count(), 3});
    auto* to = static_cast<float*>(made.mutable_data());
    for (u32 i = 0; i < mesh.vertex_count(); ++i, to += 3) {
        VECTOR_3 value(0.0F, 0.0F, 0.0F);
        (mesh.vertex(i).*get)(value);
        std::memcpy(to, &value, sizeof value);
    }
    return made;
}

template<class MESH>
py::list meshes(const OWNED_ARRAY<MESH>& all) {
    py::list made;
    for (const OWNED<MESH>& mesh : all) {
        if (!mesh) continue;
        made.append(py::make_tuple(text_of(mesh->name), vertices(*mesh, &VOR2_VERT::get_position),
                                   vertices(*mesh, &VOR2_VERT::get_normal)));
    }
    return made;
}

py::array world_matrices(const VOR2& scene) {
    const ARRAY<VOR2_MATRIX_NODE>& nodes = scene.matrix_hierarchy.nodes;
    py::array made = floats({static_cast<py::ssize_t>(nodes.size()), 3, 4});
    auto* to = static_cast<float*>(made.mutable_data());
    for (const VOR2_MATRIX_NODE& node : nodes) {
        std::memcpy(to, node.world_matrix.m, sizeof node.world_matrix.m);
        to += 12;
    }
    return made;
}

/// Moves the scene's clock; what its records hold is kept up with, whatever a script changed.
void set_time(VOR2& scene, float time, bool is_changed) {
    settle(scene);
    if (is_changed) prepare(scene);
    scene.set_time(time);
}

py::tuple pose(py::handle object, const py::object& time) {
    const Handle& handle = wanted_scene(object);
    Keeper& keeper = handle.place.keeper();
    VOR2& scene = *static_cast<VOR2*>(handle.address());
    float at = scene.environment.time_range.start;
    if (!time.is_none()) put_number(time, 'f', &at, "time");
    if (!std::isfinite(at)) throw py::value_error("time: a time that isn't finite makes no sense");
    {
        const Work work({&keeper});
        set_time(scene, at, keeper.is_changed);
    }
    keeper.is_changed = keeper.views > 0;
    return py::make_tuple(at, world_matrices(scene), meshes(scene.rigids), meshes(scene.weighted_meshes),
                          meshes(scene.morph_meshes), meshes(scene.anim_meshes));
}

} // namespace

void add_pose(py::module_& module) {
    module.def("pose", pose, py::arg("scene"), py::arg("time"));
}

} // namespace vor2::python
