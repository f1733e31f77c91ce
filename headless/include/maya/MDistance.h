#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

/// A length in one of the units that the host shows.
class MDistance {
public:
    enum Unit { kInvalid, kInches, kFeet, kYards, kMiles, kMillimeters, kCentimeters, kKilometers, kMeters, kLast };

    MDistance() : unit_(uiUnit()) {}
    MDistance(double value, Unit unit = kCentimeters) : value_(value), unit_(unit) {}
    Unit unit() const { return unit_; }
    double value() const { return value_; }
    MStatus setUnit(Unit unit);
    MStatus setValue(double value);
    double as(Unit other, MStatus* status = nullptr) const;
    double asCentimeters() const { return as(kCentimeters); }
    double asMeters() const { return as(kMeters); }
    static Unit uiUnit();
    static MStatus setUIUnit(Unit unit);
    static Unit internalUnit() { return kCentimeters; }

private:
    double value_ = 0.0;
    Unit unit_;
};
