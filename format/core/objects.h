#pragma once

/// The three abstract bases. Which of them a class has says what it can do: have a record, be a
/// top-level chunk, follow the clock.
///
/// Objects reached by pointer are owned by the object that points to them. Independent scenes may be
/// used on independent threads; one scene is used by one thread at a time.

#include "format/core/input_buffer.h"
#include "format/core/write_stream.h"

namespace VOR2_LOADER {

class RECORD_VISITOR;

/// Has a record in the file.
class VOR2_SERIALISABLE_OBJECT {
public:
    virtual ~VOR2_SERIALISABLE_OBJECT() = default;
    /// Reads the record at the buffer's cursor, in the form of that file version, and leaves the cursor
    /// behind it. Called on an object as its constructor left it: fields that the version leaves out
    /// keep their defaults. False, with the buffer failed, for a record that can't be read further.
    virtual bool load(VOR2_INPUT_BUFFER& buffer, f32 version) = 0;
    /// Writes the newest form, whatever form was read. False when a counted write came back short.
    virtual bool save(VOR2_WRITE_STREAM& stream) const = 0;
    /// Tells a visitor every field that `save` writes, in file order.
    virtual void describe(RECORD_VISITOR& visitor) const = 0;

protected:
    VOR2_SERIALISABLE_OBJECT() = default;
    VOR2_SERIALISABLE_OBJECT(const VOR2_SERIALISABLE_OBJECT&) = default;
    VOR2_SERIALISABLE_OBJECT& operator=(const VOR2_SERIALISABLE_OBJECT&) = default;
};

/// Is a top-level record, with a chunk of its own.
class VOR2_CHUNK_OBJECT {
public:
    virtual ~VOR2_CHUNK_OBJECT() = default;
    /// The chunk's type, one fixed number from 0 to 23 for each class.
    [[nodiscard]] virtual u32 chunk_id() const = 0;

protected:
    VOR2_CHUNK_OBJECT() = default;
    VOR2_CHUNK_OBJECT(const VOR2_CHUNK_OBJECT&) = default;
    VOR2_CHUNK_OBJECT& operator=(const VOR2_CHUNK_OBJECT&) = default;
};

/// Holds tracks that follow the scene's clock. Neither operation changes a key: they move cursors, and
/// what derives from the tracks' values.
class VOR2_INTERNAL_ANIM_OBJECT {
public:
    virtual ~VOR2_INTERNAL_ANIM_OBJECT() = default;
    /// By `delta` seconds, each track looping past its own end.
    virtual void advance(f32 delta) = 0;
    /// To `time` seconds, each track clamping at its ends.
    virtual void set_time(f32 time) = 0;

protected:
    VOR2_INTERNAL_ANIM_OBJECT() = default;
    VOR2_INTERNAL_ANIM_OBJECT(const VOR2_INTERNAL_ANIM_OBJECT&) = default;
    VOR2_INTERNAL_ANIM_OBJECT& operator=(const VOR2_INTERNAL_ANIM_OBJECT&) = default;
};

} // namespace VOR2_LOADER
