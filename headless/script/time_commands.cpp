// The clock, the units and the playback range.
#include "headless/script/commands.h"

namespace headless {
namespace {

Result<CommandResult> current_time(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    if (!arguments.query()) {
        if (arguments.count() != 1) return Error{"currentTime needs a time"};
        const Result<double> seconds = time_of(arguments[0]);
        if (!seconds) return seconds.error();
        scene.set_current_time(*seconds);
    }
    return number_result(scene.time_unit.from_seconds(scene.current_time()));
}

template<typename Unit>
Result<void> set_unit(const Arguments& arguments, std::string_view flag, Unit& unit) {
    const std::string* name = arguments.text(flag);
    if (!name) return {};
    const auto known = Unit::by_name(*name);
    if (!known) return Error{"'" + *name + "' is no unit"};
    unit = *known;
    return {};
}

std::string full_name(const std::string& short_name) {
    static constexpr std::pair<const char*, const char*> table[] = {
        {"mm", "millimeter"}, {"cm", "centimeter"}, {"m", "meter"},  {"km", "kilometer"}, {"in", "inch"},
        {"ft", "foot"},       {"yd", "yard"},       {"mi", "mile"},  {"deg", "degree"},   {"rad", "radian"},
        {"min", "minute"},    {"sec", "second"},    {"hour", "hour"}};
    for (const auto& [name, full] : table) {
        if (short_name == name) return full;
    }
    return short_name;
}

// Keys keep their times when the unit changes, as they do in the host unless told otherwise.
Result<CommandResult> current_unit(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    if (arguments.query()) {
        const std::string& name = arguments.has("t")   ? scene.time_unit.name
                                  : arguments.has("a") ? scene.angle_unit.name
                                                       : scene.linear_unit.name;
        return text_result(arguments.has("f") ? full_name(name) : name);
    }
    // All or none: a wrong name changes nothing.
    TimeUnit time = scene.time_unit;
    LinearUnit linear = scene.linear_unit;
    AngleUnit angle = scene.angle_unit;
    for (const Result<void>& done :
         {set_unit(arguments, "t", time), set_unit(arguments, "l", linear), set_unit(arguments, "a", angle)}) {
        if (!done) return done.error();
    }
    scene.time_unit = time;
    scene.linear_unit = linear;
    scene.angle_unit = angle;
    return CommandResult();
}

Result<CommandResult> playback_options(Session& session, const Arguments& arguments) {
    Scene& scene = session.scene();
    Scene::Playback range = scene.playback;
    const std::pair<const char*, double&> ends[] = {
        {"min", range.min}, {"max", range.max}, {"ast", range.animation_start}, {"aet", range.animation_end}};
    for (const auto& [flag, end] : ends) {
        if (arguments.query() && arguments.has(flag)) return number_result(scene.time_unit.from_seconds(end));
        const std::string* value = arguments.text(flag);
        if (!value) continue;
        const Result<double> seconds = time_of(*value);
        if (!seconds) return seconds.error();
        end = *seconds;
    }
    if (!arguments.query()) scene.playback = range;
    return CommandResult();
}

constexpr CommandRow time_rows[] = {
    {"currentTime", "u,update=b", current_time},
    {"currentUnit", "t,time=s l,linear=s a,angle=s f,fullName ua,updateAnimation=b", current_unit},
    {"playbackOptions",
     "min,minTime=s max,maxTime=s ast,animationStartTime=s aet,animationEndTime=s by,by=d l,loop=s ps,playbackSpeed=d "
     "mps,maxPlaybackSpeed=d v,view=s",
     playback_options},
};

} // namespace

std::span<const CommandRow> time_commands() {
    return time_rows;
}

} // namespace headless
