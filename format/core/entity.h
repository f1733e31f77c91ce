#pragma once

#include "format/core/record.h"

namespace VOR2_LOADER {

/// Anything with a name. `load` and `save` always give true.
class VOR2_ENTITY : public RECORDED<VOR2_ENTITY, VOR2_SERIALISABLE_OBJECT> {
public:
    TEXT name;

    static constexpr auto record() { return RECORD("VOR2_ENTITY", text("name", &VOR2_ENTITY::name)); }
};

} // namespace VOR2_LOADER
