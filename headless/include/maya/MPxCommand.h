#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>
#include <maya/detail/held.h>

class MArgList;
class MDoubleArray;
class MIntArray;
class MStringArray;
class MSyntax;

/// The base of a plug-in's commands. The host makes one by the creator at each call and checks the words against
/// the syntax, if there is one, before `doIt`.
class MPxCommand {
public:
    MPxCommand();
    virtual ~MPxCommand();
    virtual MStatus doIt(const MArgList& words) = 0;
    virtual MStatus undoIt();
    virtual MStatus redoIt();
    virtual bool isUndoable() const;
    virtual bool hasSyntax() const;
    MSyntax syntax() const;

    static void setResult(bool value);
    static void setResult(unsigned int value);
    static void setResult(int value);
    static void setResult(double value);
    static void setResult(const MString& value);
    static void setResult(const MIntArray& values);
    static void setResult(const MDoubleArray& values);
    static void setResult(const MStringArray& values);
    static void appendToResult(const MString& value);
    static void appendToResult(int value);
    static void appendToResult(double value);
    static void clearResult();
    static void displayInfo(const MString& text);
    static void displayWarning(const MString& text, bool showLineNumber = false);
    static void displayError(const MString& text, bool showLineNumber = false);

private:
    friend struct headless::Access;
    headless::Held<MSyntax> syntax_; // made where the command was registered with one
};
