#pragma once

/// What a scene brings in from outside: things that are named and held as text, and whole further scenes
/// with files of their own.

#include "format/scene/positional_object.h"

namespace VOR2_LOADER {

class VOR2;

/// Names an outside object. What the members refer to is carried and not interpreted.
class VOR2_XREF_OBJECT : public ANIMATED_RECORD<VOR2_XREF_OBJECT, VOR2_POSITIONAL_OBJECT, UNUSED__VOR2_SCALED_OBJECT,
                                                VOR2_LIT_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    TEXT xref_name;
    u32 xref_number = 0x7FFFFFFF;
    TEXT xref_text;

    static constexpr u32 CHUNK_ID = 21;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        using C = VOR2_XREF_OBJECT;
        return RECORD("VOR2_XREF_OBJECT", base<VOR2_POSITIONAL_OBJECT>(), base<VOR2_LIT_OBJECT>(),
                      base<UNUSED__VOR2_SCALED_OBJECT>().since(1.12F), text("xref_name", &C::xref_name),
                      value("xref_number", &C::xref_number), text("xref_text", &C::xref_text));
    }
};

/// Names a SpeedTree. Unlike its sister it has the scale before the lights, and in every older version.
class VOR2_XREF_SPEEDTREE : public ANIMATED_RECORD<VOR2_XREF_SPEEDTREE, VOR2_POSITIONAL_OBJECT,
                                                   UNUSED__VOR2_SCALED_OBJECT, VOR2_LIT_OBJECT, VOR2_CHUNK_OBJECT> {
public:
    TEXT speedtree_name;

    static constexpr u32 CHUNK_ID = 23;
    [[nodiscard]] u32 chunk_id() const override { return CHUNK_ID; }
    static constexpr auto record() {
        return RECORD("VOR2_XREF_SPEEDTREE", base<VOR2_POSITIONAL_OBJECT>(), base<UNUSED__VOR2_SCALED_OBJECT>(),
                      base<VOR2_LIT_OBJECT>(), text("speedtree_name", &VOR2_XREF_SPEEDTREE::speedtree_name));
    }
};

/// The most files in one chain of references, the first one not counted, and the most that one load opens.
inline constexpr u32 LONGEST_REFERENCE_CHAIN = 16;
inline constexpr u32 MOST_REFERENCES = 1024;

/// A whole further scene in a file of its own, beside the referring one. `ID` is the chunk's number and
/// all that the two classes differ in. The record is the file's name alone.
template<u32 ID>
class VOR2_XREF : public VOR2_CHUNK_OBJECT, public VOR2_INTERNAL_ANIM_OBJECT {
public:
    TEXT file_name;    ///< as stored; found by `resolve_path` beside the referring file
    OWNED<VOR2> scene; ///< may be absent; empty when the file doesn't exist

    VOR2_XREF();
    VOR2_XREF(const VOR2_XREF& source);
    VOR2_XREF& operator=(const VOR2_XREF& source);
    VOR2_XREF(VOR2_XREF&&) noexcept;
    VOR2_XREF& operator=(VOR2_XREF&&) noexcept;
    ~VOR2_XREF() override;

    static constexpr u32 CHUNK_ID = ID;
    [[nodiscard]] u32 chunk_id() const override { return ID; }
    [[nodiscard]] std::string_view class_name() const { return record().class_name; }
    static constexpr auto record() {
        return RECORD(ID == 15 ? "VOR2_XREF<15>" : "VOR2_XREF<20>", text("file_name", &VOR2_XREF::file_name));
    }
    /// Reads the record and then the file that it names, with the clock set to that scene's start. A file
    /// that doesn't exist is no failure. One that can't be read fails the record, and so does a reference
    /// back to a file of the chain, whatever name it goes by, a chain of more than
    /// `LONGEST_REFERENCE_CHAIN` files, and more than `MOST_REFERENCES` files or `LONGEST_FILE` bytes in all.
    /// The message names the file. Files are found wherever the name leads.
    bool load(VOR2_INPUT_BUFFER& buffer);
    /// Writes the record, and a present scene to its file, wherever the name leads, whose folders are made: who
    /// saves a stranger's scene looks at its names first, or stands between with an `OUTPUT_REDIRECTION`. False when
    /// the scene couldn't be saved whole, when the path has no file's name in it, and, with nothing written there, when
    /// it leads to a file that is being written.
    bool save(VOR2_WRITE_STREAM& stream) const;
    void describe(RECORD_VISITOR& visitor) const;
    void advance(f32 delta) override;
    void set_time(f32 time) override;
};

extern template class VOR2_XREF<15>;
extern template class VOR2_XREF<20>;

} // namespace VOR2_LOADER
