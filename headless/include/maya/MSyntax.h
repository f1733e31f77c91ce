#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>
#include <maya/detail/held.h>

namespace headless {
struct SyntaxTable;
}

/// Which flags and arguments a command takes.
class MSyntax {
public:
    enum MArgType {
        kInvalidArgType,
        kNoArg,
        kBoolean,
        kLong,
        kDouble,
        kString,
        kUnsigned,
        kDistance,
        kAngle,
        kTime,
        kSelectionItem,
        kLastArgType
    };
    enum MObjectFormat { kInvalidObjectFormat, kNone, kStringObjects, kSelectionList, kLastObjectFormat };

    /// A flag with up to six arguments. Names may come with or without their "-"; a name that is taken is refused.
    MStatus addFlag(const char* shortName, const char* longName, MArgType argType1 = kNoArg, MArgType argType2 = kNoArg,
                    MArgType argType3 = kNoArg, MArgType argType4 = kNoArg, MArgType argType5 = kNoArg,
                    MArgType argType6 = kNoArg);
    MStatus makeFlagMultiUse(const char* flag);
    /// In a query the flag takes its arguments too, or, where they are optional, may.
    MStatus makeFlagQueryWithFullArgs(const char* flag, bool optional);
    MStatus addArg(MArgType type);
    MStatus setObjectType(MObjectFormat format, unsigned int minimum = 0);
    MStatus setObjectType(MObjectFormat format, unsigned int minimum, unsigned int maximum);
    void setMinObjects(unsigned int minimum);
    void setMaxObjects(unsigned int maximum);
    void useSelectionAsDefault(bool use = false);
    void enableQuery(bool enable = true);
    void enableEdit(bool enable = true);
    bool canQuery() const;
    bool canEdit() const;

private:
    friend struct headless::Access;
    headless::Held<headless::SyntaxTable> table_;
};
