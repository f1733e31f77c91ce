// Lines of script: pieces with form feeds between them, one that begins with "#" in Python, any other in MEL.
// They run one after the other in one scene, and may read and write files of their own.

#include "fuzz/host_scene.h"
#include "fuzz/input.h"
#include "fuzz/sandbox.h"
#include "headless/session.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Visit visit;
    (void)fuzz::quiet_scene();
    headless::Session& session = headless::Session::current();
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\f'), rest.size());
        const std::string piece(rest.substr(0, end));
        (void)(piece.starts_with('#') ? session.run_python(piece) : session.run_mel(piece));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    fuzz::look_at(session.scene());
    fuzz::check_writing(session.scene());
    return 0;
}
