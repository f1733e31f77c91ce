#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>

/// A file by name. Names come out with forward slashes; one without a folder is in the current one.
class MFileObject {
public:
    MStatus setRawName(const MString& name);         ///< the file's own name
    MStatus setRawPath(const MString& path);         ///< its folder
    MStatus setRawFullName(const MString& fullName); ///< both
    MStatus setName(const MString& name) { return setRawName(name); }
    MStatus setFullName(const MString& fullName) { return setRawFullName(fullName); }
    MString rawName() const { return name_; }
    MString rawPath() const { return path_; }
    MString rawFullName() const { return path_ + name_; }
    MString name() const { return name_; }
    MString path() const;     ///< with a slash at its end
    MString fullName() const; ///< from the root of the file system
    MString resolvedName() const { return name(); }
    MString resolvedPath() const { return path(); }
    MString resolvedFullName() const { return fullName(); }
    bool exists() const;

private:
    MString path_, name_;
};
