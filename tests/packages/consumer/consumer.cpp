// Makes a scene of one node that moves in a straight line, thins it out, saves and loads it, and tells what is in it.

#include <format/vor2.h>
#include <inspect/json_writer.h>
#include <optimise/optimise.h>

#include <cstdio>

int main(int count, char** arguments) {
    using namespace VOR2_LOADER;
    if (count != 2) return 2;
    VOR2 scene;
    VOR2_MATRIX_NODE& node = scene.matrix_hierarchy.nodes.emplace_back();
    auto track = make_owned<VOR2_ANIMATABLE_VECTOR_3_LINEAR>();
    for (int k = 0; k <= 8; ++k) track->add_key({0.5F * static_cast<f32>(k), 0.0F, 0.0F}, 0.25F * static_cast<f32>(k));
    node.position_track = std::move(track);
    const auto result = vor2::optimise::optimise_keys(scene, {.position = 1e-4});

    TEXT name;
    for (const char* c = arguments[1]; *c != 0; ++c) name.append(*c == '/' ? u'\\' : static_cast<char16_t>(*c));
    VOR2 again;
    if (!scene.save(name) || !again.load(name, false)) return 1;
    again.set_time(1.0F);
    std::printf("%d keys, x %s\n", static_cast<int>(result.keys_after),
                vor2::inspect::shortest(again.matrix_hierarchy.nodes[0].world_matrix.m[0][3]).c_str());
    return 0;
}
