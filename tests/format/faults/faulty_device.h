#pragma once

/// A device between the library and its files that fails where a test wants it to.

#include "tests/format/every_record.h"
#include "tests/format/format_test.h"

#include <limits>

namespace VOR2_LOADER {

inline constexpr u32 NEVER = std::numeric_limits<u32>::max();

/// While one is alive, every file that the library opens goes through it.
struct FAULTY_DEVICE {
    enum class MANNER {
        ONCE,    ///< the failing call does nothing, and all is well again after it
        HALFWAY, ///< a failing write takes half of its bytes; all calls after it fail
    };

    FAULTY_DEVICE();
    ~FAULTY_DEVICE();
    FAULTY_DEVICE(const FAULTY_DEVICE&) = delete;
    FAULTY_DEVICE& operator=(const FAULTY_DEVICE&) = delete;

    u32 failing_call = NEVER; ///< counted from 0 over all writes, seeks and closes
    MANNER manner = MANNER::ONCE;
    u32 room = NEVER;           ///< no byte of a file fits behind this position
    u32 end_of_reading = NEVER; ///< files end here, whatever length they told
    u32 read_error_at = NEVER;  ///< reading fails from this position on
    u32 bytes_a_read = NEVER;   ///< no read gives more
    u32 calls = 0;              ///< made so far
};

/// A folder that goes away with this object.
class FAULTS_FOLDER {
public:
    FAULTS_FOLDER();
    ~FAULTS_FOLDER();
    FAULTS_FOLDER(const FAULTS_FOLDER&) = delete;
    FAULTS_FOLDER& operator=(const FAULTS_FOLDER&) = delete;

    [[nodiscard]] std::string path(const std::string& file) const { return my_path + "/" + file; }
    [[nodiscard]] TEXT name(const std::string& file) const { return library_name(path(file)); }
    [[nodiscard]] std::vector<u8> read(const std::string& file) const;

private:
    std::string my_path;
};

/// A scene of all records with lists of that length; with a scene like it in the file "nested.vr2".
VOR2 scene_of_every_record(u32 length, bool nested);

} // namespace VOR2_LOADER
