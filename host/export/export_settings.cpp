#include "host/export/export_settings.h"

#include <maya/MAnimControl.h>
#include <maya/MTime.h>

namespace VOR2_EXPORTER_MAYA {

EXPORT_SETTINGS::EXPORT_SETTINGS()
    : start_frame(MAnimControl::minTime().as(MTime::uiUnit())),
      stop_frame(MAnimControl::maxTime().as(MTime::uiUnit())) {}

EXPORT_SETTINGS& export_settings() {
    static EXPORT_SETTINGS settings;
    return settings;
}

} // namespace VOR2_EXPORTER_MAYA
