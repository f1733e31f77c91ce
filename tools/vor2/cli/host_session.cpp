#include "tools/vor2/cli/host_session.h"

#include "headless/script/interpreter.h"
#include "host/plugin/plugin.h"
#include "support/platform/hooks.h"
#include "tools/vor2/cli/messages.h"

#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace tool {

namespace platform = VOR2_LOADER::platform;

namespace {

constexpr std::string_view plugin_name = "vor2";

/// Seconds since 1970 as a date up to the year 9999.
std::optional<platform::UTC_TIME> from_seconds(std::string_view text) {
    std::int64_t seconds = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), seconds);
    if (error != std::errc() || end != text.data() + text.size() || seconds < 0 || seconds > 253'402'300'799) return {};
    const std::chrono::sys_seconds point{std::chrono::seconds(seconds)};
    const auto day = std::chrono::floor<std::chrono::days>(point);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss time(point - day);
    using VOR2_LOADER::u16;
    return platform::UTC_TIME{static_cast<u16>(static_cast<int>(date.year())),
                              static_cast<u16>(static_cast<unsigned>(date.month())),
                              static_cast<u16>(static_cast<unsigned>(date.day())),
                              static_cast<u16>(time.hours().count()),
                              static_cast<u16>(time.minutes().count()),
                              static_cast<u16>(time.seconds().count())};
}

/// "2026-11-24T19:05:10Z".
std::optional<platform::UTC_TIME> from_date(const std::string& text) {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0, length = 0;
    constexpr const char* form = "%4d-%2d-%2dT%2d:%2d:%2dZ%n";
    // NOLINTNEXTLINE(cert-err34-c): what was read is checked below
    const int read = std::sscanf(text.c_str(), form, &year, &month, &day, &hour, &minute, &second, &length);
    if (read != 6 || static_cast<std::size_t>(length) != text.size()) return {};
    const std::chrono::year_month_day date(std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
                                           std::chrono::day(static_cast<unsigned>(day)));
    if (!date.ok() || year < 1 || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 60)
        return {};
    using VOR2_LOADER::u16;
    return platform::UTC_TIME{static_cast<u16>(year), static_cast<u16>(month),  static_cast<u16>(day),
                              static_cast<u16>(hour), static_cast<u16>(minute), static_cast<u16>(second)};
}

std::optional<platform::UTC_TIME> parse_time(const std::string& text) {
    const std::optional<platform::UTC_TIME> time = from_seconds(text);
    return time ? time : from_date(text);
}

std::string source_date_epoch() {
    const char* value = std::getenv("SOURCE_DATE_EPOCH"); // NOLINT(concurrency-mt-unsafe)
    return value == nullptr ? std::string() : value;
}

} // namespace

void RepeatOptions::describe(Syntax& syntax) {
    syntax.text("--timestamp", "TIME",
                "the time that exports are stamped with: seconds since 1970, or 2026-11-24T19:05:10Z (default: "
                "SOURCE_DATE_EPOCH, or now)",
                timestamp_);
    syntax.text("--user", "NAME", "the name that exports are stamped with (default: the account's)", user_);
}

std::string RepeatOptions::check() const {
    if (!timestamp_.empty()) return parse_time(timestamp_) ? "" : "--timestamp: '" + timestamp_ + "' is no time";
    const std::string epoch = source_date_epoch();
    return epoch.empty() || from_seconds(epoch) ? "" : "SOURCE_DATE_EPOCH: '" + epoch + "' is no number of seconds";
}

void RepeatOptions::apply() const {
    platform::fixed_time = parse_time(timestamp_.empty() ? source_date_epoch() : timestamp_);
    if (!user_.empty()) platform::fixed_account_name = user_;
}

bool equip(headless::Session& session) {
    headless::install_interpreters(session);
    const headless::Result<void> loaded =
        session.load_plugin(std::string(plugin_name), initializePlugin, uninitializePlugin);
    if (!loaded) problem(plugin_name, loaded.error().text());
    return static_cast<bool>(loaded);
}

HostSession::HostSession(std::string file, Talk talk)
    : session_(headless::Session::current()), file_(std::move(file)), talk_(talk) {
    session_.set_message_sink(
        [this](headless::MessageKind kind, const std::string& text) { take_message(kind, text); });
    if (talk_ == Talk::problems) platform::print_line_hook = [](std::string_view) {};
    session_.new_scene();
    is_equipped_ = equip(session_);
}

HostSession::~HostSession() {
    session_.set_message_sink(nullptr);
    platform::print_line_hook = nullptr;
}

void HostSession::take_message(headless::MessageKind kind, const std::string& text) {
    if (kind == headless::MessageKind::error) {
        note_error(text);
    } else if (kind == headless::MessageKind::warning) {
        // The host names the file itself where it knows it.
        const std::string named = file_ + ":";
        const std::string_view rest = std::string_view(text).substr(text.starts_with(named) ? named.size() : 0);
        warnings_.emplace_back(rest.substr(rest.starts_with(' ') ? 1 : 0));
        note(named + " warning: " + warnings_.back());
    } else if (talk_ == Talk::everything) {
        platform::print_line((kind == headless::MessageKind::result ? "Result: " : "") + text);
    }
}

void HostSession::begin_step() {
    first_error_.clear();
    told_before_ = problems_told();
}

void HostSession::note_error(const std::string& text) {
    if (first_error_.empty()) first_error_ = text;
}

void HostSession::note_error(const headless::Error& error) {
    std::string place;
    if (error.line > 0)
        place = "line " + std::to_string(error.line) + ", column " + std::to_string(error.column) + ": ";
    note_error(place + error.message);
}

bool HostSession::tell_error() {
    if (first_error_.empty()) return true;
    if (problems_told() == told_before_) problem(file_, first_error_);
    return false;
}

bool HostSession::open(const std::string& scene, const headless::BvhOptions& capture) {
    session_.register_reader("bvh", [capture](headless::Scene& into, const std::string& path) {
        return headless::read_bvh(into, path, capture);
    });
    begin_step();
    const headless::Result<void> opened = session_.open_file(scene);
    if (!opened) note_error(opened.error());
    return tell_error();
}

bool HostSession::set_time_unit(const std::string& unit) {
    const std::optional<headless::TimeUnit> known = headless::TimeUnit::by_name(unit);
    if (!known) {
        problem(file_, "there is no time unit '" + unit + "'");
        return false;
    }
    session_.scene().time_unit = *known;
    return true;
}

bool HostSession::save_as(const std::string& path) {
    const headless::Result<void> done = session_.save_as(path);
    if (!done) problem(path, done.error().message);
    return static_cast<bool>(done);
}

std::string HostSession::try_command(const std::string& command, const std::vector<std::string>& arguments) {
    begin_step();
    const headless::Result<headless::CommandResult> result = session_.run_command(command, arguments);
    if (!result) note_error(result.error());
    return first_error_;
}

bool HostSession::run(const std::string& command, const std::vector<std::string>& arguments) {
    (void)try_command(command, arguments);
    return tell_error();
}

bool HostSession::run_script(const std::string& text, bool python) {
    begin_step();
    const headless::Result<headless::CommandResult> result =
        python ? session_.run_python(text) : session_.run_mel(text);
    if (!result) {
        note_error(result.error());
    } else if (result->kind != headless::CommandResult::Kind::none) {
        session_.message(headless::MessageKind::result, result->text());
    }
    return tell_error();
}

} // namespace tool
