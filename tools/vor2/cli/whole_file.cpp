#include "tools/vor2/cli/whole_file.h"

#include "format/core/files.h"
#include "support/platform/native_path.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/cli/system.h"

#include <algorithm>

namespace tool {

using namespace VOR2_LOADER;

std::optional<std::vector<std::uint8_t>> read_whole(const std::string& name, std::string& why) {
    why = platform::why_unreadable(name);
    if (!why.empty()) return {};
    READ_FILE file;
    if (!file.open(library_name(name))) {
        why = error_text(file.last_error());
        return {};
    }
    const i64 length = file.length();
    if (length < 0) {
        why = "is longer than 2 GiB";
        return {};
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(length));
    if (file.read(bytes.data(), static_cast<u32>(length)) == bytes.size()) return bytes;
    why = "can't be read to its end";
    return {};
}

bool write_whole(const std::string& name, std::string_view bytes) {
    constexpr std::size_t most_at_once = 1U << 30;
    WRITE_FILE file;
    bool good = file.open(library_name(name), false);
    while (good && !bytes.empty()) {
        const auto count = static_cast<u32>(std::min(bytes.size(), most_at_once));
        good = file.write(bytes.data(), count) == count;
        bytes.remove_prefix(count);
    }
    good = file.close() && good;
    if (!good) problem(name, file.last_error() > 0 ? error_text(file.last_error()) : "can't be written");
    return good;
}

bool write_result(const std::string& name, std::string_view bytes) {
    if (name.empty()) {
        vor2::inspect::TextOut out(results());
        out.put(bytes);
        return finish(out);
    }
    OutputSet output(name);
    return output.ready() && write_whole(name, bytes) && output.commit();
}

} // namespace tool
