#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTransformationMatrix.h>

class MDagPath;
class MSelectionList;
class MTime;

/// The selection, scripts and messages.
class MGlobal {
public:
    enum ListAdjustment { kReplaceList, kXORWithList, kAddToList, kRemoveFromList, kAddToHeadOfList };
    enum MMayaState { kInteractive, kBatch, kLibraryApp, kBaseUIMode };

    static MStatus getActiveSelectionList(MSelectionList& list, bool orderedSelectionIfAvailable = false);
    static MStatus setActiveSelectionList(const MSelectionList& list, ListAdjustment how = kReplaceList);
    static MStatus getSelectionListByName(const MString& name, MSelectionList& list);
    /// An unknown or ambiguous name is a failure and changes nothing.
    static MStatus selectByName(const MString& name, ListAdjustment how = kAddToList);
    static MStatus select(MObject& node, ListAdjustment how = kAddToList);
    static MStatus select(const MDagPath& path, const MObject& component, ListAdjustment how = kAddToList);
    static MStatus unselect(MObject& node);
    static MStatus unselectByName(const MString& name);
    static MStatus clearSelectionList();

    static MStatus viewFrame(const MTime& time);
    static MStatus viewFrame(double frame); ///< in the scene's unit

    static MStatus executeCommand(const MString& line, bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executeCommand(const MString& line, int& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& line, double& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& line, MString& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& line, MStringArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& line, MDoubleArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MStatus executeCommand(const MString& line, MIntArray& result, bool displayEnabled = false,
                                  bool undoEnabled = false);
    static MString executeCommandStringResult(const MString& line, bool displayEnabled = false,
                                              bool undoEnabled = false, MStatus* status = nullptr);
    static MStatus executePythonCommand(const MString& line, bool displayEnabled = false, bool undoEnabled = false);
    static MStatus executePythonCommand(const MString& line, MString& result, bool displayEnabled = false,
                                        bool undoEnabled = false);
    static MString executePythonCommandStringResult(const MString& line, bool displayEnabled = false,
                                                    bool undoEnabled = false, MStatus* status = nullptr);

    static void displayInfo(const MString& text);
    static void displayWarning(const MString& text);
    static void displayError(const MString& text);

    static MString mayaVersion();
    static int apiVersion();
    static MMayaState mayaState(MStatus* status = nullptr);
    static bool isYAxisUp(MStatus* status = nullptr);
    static bool isZAxisUp(MStatus* status = nullptr);

private:
    ~MGlobal();
};
