#pragma once

/// Names in the file, and values among the extended properties.

#include "format/tracks/extended_properties.h"

#include <maya/MString.h>

#include <string>

namespace VOR2_EXPORTER_MAYA {

using namespace VOR2_LOADER;

/// A host name as the settings have names: without its namespaces, or with them.
[[nodiscard]] TEXT name_for_file(const MString& name);

void add_text(VOR2_EXTENDED_PROPERTIES& properties, const std::string& name, const MString& value);
void add_number(VOR2_EXTENDED_PROPERTIES& properties, const std::string& name, double value);
void add_vector(VOR2_EXTENDED_PROPERTIES& properties, const std::string& name, const VECTOR_3& value);

} // namespace VOR2_EXPORTER_MAYA
