#pragma once

#include <maya/MArgList.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

class MDoubleArray;
class MIntArray;
class MStringArray;

/// The base of a plug-in's commands. The host makes one by the creator at each call and checks the words against
/// the syntax, if there is one, before `doIt`.
class MPxCommand {
public:
    MPxCommand() = default;
    virtual ~MPxCommand() = default;
    virtual MStatus doIt(const MArgList& words) = 0;
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    virtual bool isUndoable() const { return false; }
    virtual bool hasSyntax() const { return has_syntax_; }
    MSyntax syntax() const { return syntax_; }

    static MStatus setResult(bool value);
    static MStatus setResult(unsigned int value);
    static MStatus setResult(int value);
    static MStatus setResult(double value);
    static MStatus setResult(const MString& value);
    static MStatus setResult(const MIntArray& values);
    static MStatus setResult(const MDoubleArray& values);
    static MStatus setResult(const MStringArray& values);
    static MStatus appendToResult(const MString& value);
    static MStatus appendToResult(int value);
    static MStatus appendToResult(double value);
    static MStatus clearResult();
    static void displayInfo(const MString& text);
    static void displayWarning(const MString& text);
    static void displayError(const MString& text);

private:
    friend struct headless::Access;
    MSyntax syntax_;
    bool has_syntax_ = false;
};
