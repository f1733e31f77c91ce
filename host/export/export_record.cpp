#include "host/export/export_record.h"

#include "host/export/host_text.h"
#include "support/platform/platform.h"
#include "support/text/formatter.h"

#include <maya/MFileIO.h>
#include <maya/MGlobal.h>

#include <cstdio>

namespace VOR2_EXPORTER_MAYA {
namespace {

constexpr std::size_t USER_NAME_CAPACITY = 64;

} // namespace

TEXT user_name_line() {
    const auto name = platform::account_name(USER_NAME_CAPACITY);
    return formatted(TEXT(u"USERNAME:\t%s"), name ? widen(*name) : TEXT(u"Unknown User"));
}

TEXT export_time_line() {
    const platform::UTC_TIME now = platform::utc_now();
    return formatted(TEXT(u"EXPORTED:\t%02d/%02d/%04d,%02d:%02d:%02d"), i32{now.day}, i32{now.month}, i32{now.year},
                     i32{now.hour}, i32{now.minute}, i32{now.second});
}

TEXT export_record(const MString& path) {
    const TEXT lines[] = {user_name_line(), export_time_line(), formatted(TEXT(u"VOR_NAME:\t%s"), to_text(path)),
                          formatted(TEXT(u"MAYA_FILE:\t%s"), to_text(MFileIO::currentFile()))};
    TEXT record;
    for (const TEXT& line : lines) {
        record.append(line.view());
        record.append(u"\r\n");
    }
    return record;
}

void fill_file_info(VOR2& root, const MString& path) {
    const float version = MGlobal::mayaVersion().asFloat();
    char creator[128];
    (void)std::snprintf(creator, sizeof creator, "Maya v%.2f  ", static_cast<double>(version));
    root.inf.creator = widen(std::string_view(creator));
    platform::print_line(MFileIO::currentFile().asChar());
    root.inf.file_info = export_record(path);
}

} // namespace VOR2_EXPORTER_MAYA
