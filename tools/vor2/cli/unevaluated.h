#pragma once

/// What of a scene's motion the embedded host can't work out, as an export sees it.

#include "headless/graph/drivers.h"
#include "inspect/json_writer.h"

#include <string>
#include <vector>

namespace tool {

/// What moves the nodes that an export by these names would sample, and isn't evaluated.
std::vector<headless::Unevaluated> unevaluated_in_export(headless::Scene& scene, const std::vector<std::string>& names);

/// The report of one export for programs.
struct ExportReport {
    std::string file, output;
    bool exported = false;
    std::vector<headless::Unevaluated> unevaluated;
    std::vector<std::string> warnings; ///< as they were told to the user
};
void write_report(const ExportReport& report, vor2::inspect::JsonWriter& json);

} // namespace tool
