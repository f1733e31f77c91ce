#pragma once

#include <maya/MIOStream.h>
#include <maya/MTypes.h>

class MString;

/// How a call went. True and "no error" are the same.
class MStatus {
public:
    enum MStatusCode {
        kSuccess = 0,
        kFailure,
        kInsufficientMemory,
        kInvalidParameter,
        kLicenseFailure,
        kUnknownParameter,
        kNotImplemented,
        kNotFound,
        kEndOfFile
    };

    MStatus() = default;
    MStatus(MStatusCode code) : code_(code) {}

    bool operator==(const MStatus& other) const { return code_ == other.code_; }
    bool operator==(const MStatusCode code) const { return code_ == code; }
    bool operator!=(const MStatus& other) const { return code_ != other.code_; }
    bool operator!=(const MStatusCode code) const { return code_ != code; }
    operator bool() const { return code_ == kSuccess; }
    bool error() const { return code_ != kSuccess; }
    void clear() { code_ = kSuccess; }
    MStatusCode statusCode() const { return code_; }
    MString errorString() const;
    /// Writes "message: why" to standard error.
    void perror(const char* message) const;
    void perror(const MString& message) const;

    friend bool operator==(const MStatusCode code, const MStatus& status) { return status == code; }
    friend bool operator!=(const MStatusCode code, const MStatus& status) { return status != code; }
    friend ostream& operator<<(ostream& out, MStatus& status);

private:
    MStatusCode code_ = kSuccess;
};

typedef MStatus MS;

#define CHECK_MSTATUS(status)                                                                                          \
    {                                                                                                                  \
        MStatus maya_status_ = (status);                                                                               \
        if (MStatus::kSuccess != maya_status_) maya_status_.perror(#status);                                           \
    }
#define CHECK_MSTATUS_AND_RETURN(status, result)                                                                       \
    {                                                                                                                  \
        MStatus maya_status_ = (status);                                                                               \
        if (MStatus::kSuccess != maya_status_) {                                                                       \
            maya_status_.perror(#status);                                                                              \
            return (result);                                                                                           \
        }                                                                                                              \
    }
#define CHECK_MSTATUS_AND_RETURN_IT(status) CHECK_MSTATUS_AND_RETURN((status), (status))
