#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

/// A time as a number of some unit. A fraction of the host's tick is kept.
class MTime {
public:
    enum Unit {
        kInvalid,
        kHours,
        kMinutes,
        kSeconds,
        kMilliseconds,
        kGames,     ///< 15 a second
        kFilm,      ///< 24
        kPALFrame,  ///< 25
        kNTSCFrame, ///< 30
        kShowScan,  ///< 48
        kPALField,  ///< 50
        kNTSCField, ///< 60
        k2FPS,
        k3FPS,
        k4FPS,
        k5FPS,
        k6FPS,
        k8FPS,
        k10FPS,
        k12FPS,
        k16FPS,
        k20FPS,
        k40FPS,
        k75FPS,
        k80FPS,
        k100FPS,
        k120FPS,
        k125FPS,
        k150FPS,
        k200FPS,
        k240FPS,
        k250FPS,
        k300FPS,
        k375FPS,
        k400FPS,
        k500FPS,
        k600FPS,
        k750FPS,
        k1200FPS,
        k1500FPS,
        k2000FPS,
        k3000FPS,
        k6000FPS,
        kUserDef, ///< the scene's own rate, where it is none of these
        kLast
    };

    MTime() : unit_(uiUnit()) {}
    MTime(double value, Unit unit = kFilm) : value_(value), unit_(unit) {}
    Unit unit() const { return unit_; }
    double value() const { return value_; }
    MStatus setUnit(Unit unit);
    MStatus setValue(double value);
    double as(Unit other) const;
    static Unit uiUnit();
    static MStatus setUIUnit(Unit unit);

    bool operator==(const MTime& other) const { return seconds() == other.seconds(); }
    bool operator!=(const MTime& other) const { return !(*this == other); }
    bool operator<(const MTime& other) const { return seconds() < other.seconds(); }
    bool operator>(const MTime& other) const { return other < *this; }
    bool operator<=(const MTime& other) const { return !(other < *this); }
    bool operator>=(const MTime& other) const { return !(*this < other); }
    MTime operator+(const MTime& other) const { return {value_ + other.as(unit_), unit_}; }
    MTime operator-(const MTime& other) const { return {value_ - other.as(unit_), unit_}; }
    MTime operator+(double by) const { return {value_ + by, unit_}; }
    MTime operator-(double by) const { return {value_ - by, unit_}; }
    MTime operator*(double by) const { return {value_ * by, unit_}; }
    MTime operator/(double by) const { return {value_ / by, unit_}; }
    MTime& operator+=(const MTime& other) { return *this = *this + other; }
    MTime& operator-=(const MTime& other) { return *this = *this - other; }
    MTime& operator+=(double by) { return *this = *this + by; }
    MTime& operator-=(double by) { return *this = *this - by; }
    MTime& operator++() { return *this += 1.0; }
    MTime& operator--() { return *this -= 1.0; }

    friend ostream& operator<<(ostream& out, const MTime& time);

private:
    double seconds() const { return as(kSeconds); }
    double value_ = 0.0;
    Unit unit_;
};
