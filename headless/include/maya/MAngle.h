#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

/// An angle in one of the units that the host shows.
class MAngle {
public:
    enum Unit { kInvalid, kRadians, kDegrees, kAngMinutes, kAngSeconds, kLast };

    MAngle() : unit_(uiUnit()) {}
    MAngle(double value, Unit unit = kRadians) : value_(value), unit_(unit) {}
    Unit unit() const { return unit_; }
    double value() const { return value_; }
    MStatus setUnit(Unit unit);
    MStatus setValue(double value);
    double as(Unit other, MStatus* status = nullptr) const;
    double asRadians() const { return as(kRadians); }
    double asDegrees() const { return as(kDegrees); }
    static Unit uiUnit();
    static MStatus setUIUnit(Unit unit);
    static Unit internalUnit() { return kRadians; }

private:
    double value_ = 0.0;
    Unit unit_;
};
