#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/held.h>

class MAngle;
class MArgList;
class MDistance;
class MSelectionList;
class MString;
class MStringArray;
class MSyntax;
class MTime;
namespace headless {
struct ParsedArguments;
}

/// A command's words, sorted out by its syntax. Flags are asked for by either name, with or without the "-".
class MArgParser {
public:
    MArgParser(const MSyntax& syntax, const MArgList& words, MStatus* status = nullptr);

    bool isFlagSet(const char* flag, MStatus* status = nullptr) const;
    bool isEdit(MStatus* status = nullptr) const;
    bool isQuery(MStatus* status = nullptr) const;
    unsigned int numberOfFlagsUsed() const;
    unsigned int numberOfFlagUses(const char* flag) const;
    /// Where in the words the arguments of that use begin.
    MStatus getFlagArgumentPosition(const char* flag, unsigned int use, unsigned int& position) const;
    /// All arguments of one use of a flag.
    MStatus getFlagArgumentList(const char* flag, unsigned int use, MArgList& arguments) const;

    // Of the flag's last use.
    MStatus getFlagArgument(const char* flag, unsigned int i, bool& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int i, int& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int i, unsigned int& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int i, double& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int i, MString& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int i, MTime& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int i, MAngle& value) const;
    MStatus getFlagArgument(const char* flag, unsigned int i, MDistance& value) const;
    bool flagArgumentBool(const char* flag, unsigned int i, MStatus* status = nullptr) const;
    int flagArgumentInt(const char* flag, unsigned int i, MStatus* status = nullptr) const;
    double flagArgumentDouble(const char* flag, unsigned int i, MStatus* status = nullptr) const;
    MString flagArgumentString(const char* flag, unsigned int i, MStatus* status = nullptr) const;

    // Arguments without a flag.
    MStatus getCommandArgument(unsigned int i, bool& value) const;
    MStatus getCommandArgument(unsigned int i, int& value) const;
    MStatus getCommandArgument(unsigned int i, double& value) const;
    MStatus getCommandArgument(unsigned int i, MString& value) const;
    bool commandArgumentBool(unsigned int i, MStatus* status = nullptr) const;
    int commandArgumentInt(unsigned int i, MStatus* status = nullptr) const;
    double commandArgumentDouble(unsigned int i, MStatus* status = nullptr) const;
    MString commandArgumentString(unsigned int i, MStatus* status = nullptr) const;
    MStatus getObjects(MStringArray& names) const;

private:
    friend struct headless::Access;
    headless::Held<headless::ParsedArguments> parsed_;
};
