// MTime, MAngle and MDistance.
#include "headless/api/access.h"

#include <maya/MAngle.h>
#include <maya/MDistance.h>
#include <maya/MTime.h>

#include <iterator>

using headless::Access;

namespace {

// Of the units from kHours on, in their order.
constexpr double rates[] = {1.0 / 3600, 1.0 / 60, 1,   1000, 15,  24,  25,  30,  48,  50,   60,   2,    3,    4,
                            5,          6,        8,   10,   12,  16,  20,  40,  75,  80,   100,  120,  125,  150,
                            200,        240,      250, 300,  375, 400, 500, 600, 750, 1200, 1500, 2000, 3000, 6000};
static_assert(std::size(rates) == MTime::kUserDef - MTime::kHours);

bool is_unit(MTime::Unit unit) {
    return unit > MTime::kInvalid && unit < MTime::kLast;
}

double per_second(MTime::Unit unit) {
    const bool listed = unit >= MTime::kHours && unit < MTime::kUserDef;
    return listed ? rates[unit - MTime::kHours] : Access::scene().time_unit.per_second;
}

} // namespace

MStatus MTime::setUnit(Unit unit) {
    if (!is_unit(unit)) return MStatus::kInvalidParameter;
    unit_ = unit;
    return MStatus::kSuccess;
}

MStatus MTime::setValue(double value) {
    value_ = value;
    return MStatus::kSuccess;
}

double MTime::as(Unit other) const {
    return other == unit_ ? value_ : value_ / per_second(unit_) * per_second(other);
}

MTime::Unit MTime::uiUnit() {
    const double rate = Access::scene().time_unit.per_second;
    for (int i = 0; i < static_cast<int>(std::size(rates)); ++i) {
        if (rates[i] == rate) return static_cast<Unit>(kHours + i);
    }
    return kUserDef;
}

MStatus MTime::setUIUnit(Unit unit) {
    static constexpr const char* names[] = {"hour", "min",  "sec",  "millisec", "game", "film",
                                            "pal",  "ntsc", "show", "palf",     "ntscf"};
    if (!is_unit(unit)) return MStatus::kInvalidParameter;
    if (unit == kUserDef) return MStatus::kSuccess;
    const int i = unit - kHours;
    const std::string name = i < static_cast<int>(std::size(names))
                                 ? std::string(names[i])
                                 : std::to_string(static_cast<int>(rates[i])) + "fps";
    Access::scene().time_unit = {name, rates[i]};
    return MStatus::kSuccess;
}

ostream& operator<<(ostream& out, const MTime& time) {
    return out << time.value();
}

namespace {

struct NamedSize {
    const char* name;
    double size;
};

// By unit, the first for kInvalid.
constexpr NamedSize angles[] = {{"rad", 1},
                                {"rad", 1},
                                {"deg", std::numbers::pi / 180},
                                {"min", std::numbers::pi / 180 / 60},
                                {"sec", std::numbers::pi / 180 / 3600}};
constexpr NamedSize lengths[] = {{"cm", 1},   {"in", 2.54}, {"ft", 30.48},    {"yd", 91.44}, {"mi", 160934.4},
                                 {"mm", 0.1}, {"cm", 1},    {"km", 100000.0}, {"m", 100}};

} // namespace

MStatus MAngle::setUnit(Unit unit) {
    if (unit <= kInvalid || unit >= kLast) return MStatus::kInvalidParameter;
    unit_ = unit;
    return MStatus::kSuccess;
}

MStatus MAngle::setValue(double value) {
    value_ = value;
    return MStatus::kSuccess;
}

double MAngle::as(Unit other, MStatus* status) const {
    const bool known = other > kInvalid && other < kLast;
    headless::put(status, known ? MStatus::kSuccess : MStatus::kInvalidParameter);
    if (other == unit_ || !known) return value_;
    return value_ * angles[unit_].size / angles[other].size;
}

MAngle::Unit MAngle::uiUnit() {
    const std::string& name = Access::scene().angle_unit.name;
    return name == "deg" ? kDegrees : name == "min" ? kAngMinutes : name == "sec" ? kAngSeconds : kRadians;
}

MStatus MAngle::setUIUnit(Unit unit) {
    if (unit <= kInvalid || unit >= kLast) return MStatus::kInvalidParameter;
    Access::scene().angle_unit = *headless::AngleUnit::by_name(angles[unit].name);
    return MStatus::kSuccess;
}

MStatus MDistance::setUnit(Unit unit) {
    if (unit <= kInvalid || unit >= kLast) return MStatus::kInvalidParameter;
    unit_ = unit;
    return MStatus::kSuccess;
}

MStatus MDistance::setValue(double value) {
    value_ = value;
    return MStatus::kSuccess;
}

double MDistance::as(Unit other, MStatus* status) const {
    const bool known = other > kInvalid && other < kLast;
    headless::put(status, known ? MStatus::kSuccess : MStatus::kInvalidParameter);
    if (other == unit_ || !known) return value_;
    return value_ * lengths[unit_].size / lengths[other].size;
}

MDistance::Unit MDistance::uiUnit() {
    const std::string& name = Access::scene().linear_unit.name;
    for (int i = kInvalid + 1; i < kLast; ++i) {
        if (name == lengths[i].name) return static_cast<Unit>(i);
    }
    return kCentimeters;
}

MStatus MDistance::setUIUnit(Unit unit) {
    if (unit <= kInvalid || unit >= kLast) return MStatus::kInvalidParameter;
    Access::scene().linear_unit = *headless::LinearUnit::by_name(lengths[unit].name);
    return MStatus::kSuccess;
}
