// Maya ASCII of any text: what is read can be evaluated, and written and read again without a loss.

#include "fuzz/host_scene.h"
#include "fuzz/input.h"
#include "fuzz/sandbox.h"
#include "headless/files/ma_reader.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Visit visit;
    headless::Scene& scene = fuzz::quiet_scene();
    const std::size_t before = scene.node_count();
    const std::string_view text = fuzz::first_file({reinterpret_cast<const char*>(data), size});
    if (!headless::read_maya_ascii_text(scene, text, fuzz::sandbox() + "scene.ma")) {
        if (scene.node_count() != before) fuzz::wrong("a refused file leaves nodes behind");
        return 0;
    }
    fuzz::look_at(scene);
    fuzz::check_writing(scene);
    return 0;
}
