#include "host/export/properties.h"

#include "format/tracks/constant_track.h"
#include "host/export/export_settings.h"
#include "host/export/host_text.h"

#include <string_view>

namespace VOR2_EXPORTER_MAYA {

TEXT name_for_file(const MString& name) {
    const std::string_view whole = name.asChar();
    const std::size_t colon = whole.rfind(':');
    const bool strip = export_settings().strip_namespace && colon != std::string_view::npos && colon + 1 < whole.size();
    return to_text(MString(std::string(strip ? whole.substr(colon + 1) : whole).c_str()));
}

void add_text(VOR2_EXTENDED_PROPERTIES& properties, const std::string& name, const MString& value) {
    VOR2_NAMED_STRING_ARRAY& made = properties.string_arrays.emplace_back();
    made.name = to_text(MString(name.c_str()));
    made.strings.push_back(to_text(value));
}

void add_number(VOR2_EXTENDED_PROPERTIES& properties, const std::string& name, double value) {
    auto& made = properties.float_properties.emplace_back();
    made.name = to_text(MString(name.c_str()));
    made.track = constant_track<VOR2_ANIMATABLE_FLOAT32_LINEAR>(static_cast<f32>(value));
}

void add_vector(VOR2_EXTENDED_PROPERTIES& properties, const std::string& name, const VECTOR_3& value) {
    auto& made = properties.vector_3_properties.emplace_back();
    made.name = to_text(MString(name.c_str()));
    made.track = constant_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(value);
}

} // namespace VOR2_EXPORTER_MAYA
