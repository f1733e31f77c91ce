#pragma once

#include <maya/MArgParser.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MArgList;
class MSelectionList;
class MSyntax;

/// A parser that also looks up the scene's objects.
class MArgDatabase : public MArgParser {
public:
    MArgDatabase(const MSyntax& syntax, const MArgList& words, MStatus* status = nullptr)
        : MArgParser(syntax, words, status) {}

    using MArgParser::getCommandArgument;
    using MArgParser::getFlagArgument;
    using MArgParser::getObjects;
    MStatus getFlagArgument(const char* flag, unsigned int i, MSelectionList& list) const;
    MStatus getCommandArgument(unsigned int i, MSelectionList& list) const;
    /// The objects named, or else, where the syntax says so, the selection.
    MStatus getObjects(MSelectionList& list) const;
};
