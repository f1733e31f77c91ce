// make_reference_files FOLDER: writes every record in the layout of every version there, with and without what is
// optional, and with lists of no and of three elements.

#include "tests/format/every_record.h"

#include <filesystem>
#include <fstream>

int main(int argument_count, char** arguments) {
    using namespace VOR2_LOADER;
    if (argument_count != 2) return 2;
    const std::filesystem::path folder = arguments[1];
    int count = 0;
    bool good = true;
    const auto write = [&](const EVERY_RECORD& records) {
        const BYTES bytes = records.file();
        std::ofstream file(folder / (std::to_string(count++) + ".vr2"), std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data.data()), static_cast<std::streamsize>(bytes.size()));
        good = good && file.flush().good();
    };
    for (const f32 version : telling_versions()) {
        write({version, version});
        write({version, version, false, 3});
        write({version, version, true, 0});
        write({version, version, true, 1, true, u"none.vr2"});
    }
    return good ? 0 : 1;
}
