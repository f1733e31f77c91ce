#pragma once

#include "format/core/record.h"

namespace VOR2_LOADER {

/// The version that `save` writes and the newest that `load` takes.
inline constexpr f32 CURRENT_VERSION = 1.16F;

/// Chunk 0: the one version number of a file, and two texts that say where it comes from.
class VOR2_INF : public VOR2_CHUNK_OBJECT {
public:
    f32 version = CURRENT_VERSION; ///< of the file this came from; `save` always states the current one
    TEXT creator{u"NATIVE WIN32"}; ///< what made the file
    TEXT file_info;                ///< free text about the export

    static constexpr u32 CHUNK_ID = 0;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_INF;
        return RECORD("VOR2_INF", value("version", &C::version), text("creator", &C::creator),
                      text("file_info", &C::file_info));
    }
    void reset() { *this = VOR2_INF(); }
    /// False for a file that is newer than this reader, or whose version isn't a number. There is no
    /// lower bound.
    bool load(VOR2_INPUT_BUFFER& buffer);
    bool save(VOR2_WRITE_STREAM& stream) const;
    void describe(RECORD_VISITOR& visitor) const { RECORD_OPERATIONS<VOR2_INF>::describe(*this, visitor); }
};

} // namespace VOR2_LOADER
