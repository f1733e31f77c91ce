// make_seeds FOLDER: writes the first inputs for the target of scene files there: every record in every version, and
// each chunk of the newest in a file of its own.

#include "tests/format/every_record.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

namespace {

using namespace VOR2_LOADER;

class SeedFolder {
public:
    explicit SeedFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

    void add(const BYTES& bytes) {
        std::ofstream file(folder_ / (std::to_string(count_++) + ".vr2"), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data.data()), static_cast<std::streamsize>(bytes.size()));
        good_ = good_ && file.flush().good();
    }
    /// A file for each chunk, behind the head of the whole.
    void add_chunks(const BYTES& whole) {
        const BYTES head = file_of_version(CURRENT_VERSION);
        std::size_t length = 0;
        for (std::size_t at = sizeof MAGIC_WORD; at < whole.size(); at += length) {
            u32 stated = 0;
            std::memcpy(&stated, &whole.data[at], sizeof stated);
            length = stated;
            add(BYTES(head).raw(&whole.data[at], length));
        }
    }
    [[nodiscard]] bool good() const { return good_; }

private:
    std::filesystem::path folder_;
    int count_ = 0;
    bool good_ = true;
};

} // namespace

int main(int argument_count, char** arguments) {
    if (argument_count != 2) {
        std::fputs("usage: make_seeds FOLDER\n", stderr);
        return 2;
    }
    SeedFolder seeds(arguments[1]);
    for (const f32 version : telling_versions()) seeds.add(EVERY_RECORD{version, version, true, 1}.file());
    seeds.add(EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION, false, 0}.file());
    seeds.add(EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION, true, 2, true, u"plain.vr2"}.file());
    seeds.add_chunks(EVERY_RECORD{CURRENT_VERSION, CURRENT_VERSION, true, 2, true, u"plain.vr2"}.file());
    return seeds.good() ? 0 : 1;
}
