// MSyntax, MArgList, MArgParser and MArgDatabase.
#include "headless/api/arguments.h"
#include "headless/api/held.h"

#include <maya/MAngle.h>
#include <maya/MArgDatabase.h>
#include <maya/MDistance.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>

#include <charconv>

using namespace headless;

namespace {

std::string_view name_of(const char* flag) {
    return flag ? flag : "";
}

} // namespace

template class headless::Held<SyntaxTable>;
template class headless::Held<ParsedArguments>;
template class headless::Held<headless::Words>;

MStatus MSyntax::addFlag(const char* shortName, const char* longName, MArgType type1, MArgType type2, MArgType type3,
                         MArgType type4, MArgType type5, MArgType type6) {
    const auto bare = [](const char* name) { return std::string(name ? (*name == '-' ? name + 1 : name) : ""); };
    FlagRule rule{bare(shortName), bare(longName), {}};
    if (rule.short_name.empty() || rule.long_name.empty()) return MStatus::kInvalidParameter;
    if (table_->find(rule.short_name) >= 0 || table_->find(rule.long_name) >= 0) return MStatus::kFailure;
    for (const MArgType type : {type1, type2, type3, type4, type5, type6}) {
        if (type <= kInvalidArgType || type >= kLastArgType) return MStatus::kInvalidParameter;
        if (type == kNoArg) break;
        rule.arguments.push_back(type);
    }
    table_->flags.push_back(std::move(rule));
    return MStatus::kSuccess;
}

MStatus MSyntax::makeFlagMultiUse(const char* flag) {
    const int at = table_->find(name_of(flag));
    if (at < 0) return MStatus::kInvalidParameter;
    table_->flags[at].multi_use = true;
    return MStatus::kSuccess;
}

MStatus MSyntax::makeFlagQueryWithFullArgs(const char* flag, bool optional) {
    const int at = table_->find(name_of(flag));
    if (at < 0) return MStatus::kInvalidParameter;
    table_->flags[at].full_query = true;
    table_->flags[at].query_optional = optional;
    return MStatus::kSuccess;
}

MStatus MSyntax::addArg(MArgType type) {
    if (type <= kNoArg || type >= kLastArgType) return MStatus::kInvalidParameter;
    table_->arguments.push_back(type);
    return MStatus::kSuccess;
}

MStatus MSyntax::setObjectType(MObjectFormat format, unsigned int minimum) {
    return setObjectType(format, minimum, ~0u);
}

MStatus MSyntax::setObjectType(MObjectFormat format, unsigned int minimum, unsigned int maximum) {
    if (format <= kInvalidObjectFormat || format >= kLastObjectFormat || minimum > maximum)
        return MStatus::kInvalidParameter;
    table_->object_format = format;
    table_->min_objects = minimum;
    table_->max_objects = maximum;
    return MStatus::kSuccess;
}

void MSyntax::setMinObjects(unsigned int minimum) {
    table_->min_objects = minimum;
}
void MSyntax::setMaxObjects(unsigned int maximum) {
    table_->max_objects = maximum;
}
void MSyntax::useSelectionAsDefault(bool use) {
    table_->selection_as_default = use;
}
void MSyntax::enableQuery(bool enable) {
    table_->query = enable;
}
void MSyntax::enableEdit(bool enable) {
    table_->edit = enable;
}
bool MSyntax::canQuery() const {
    return table_->query;
}
bool MSyntax::canEdit() const {
    return table_->edit;
}

namespace {

// The `i`-th word as a value of some kind.
template<typename T, typename Convert>
MStatus read(const std::vector<MString>& words, unsigned int i, Convert convert, T& out) {
    if (i >= words.size()) return MStatus::kInvalidParameter;
    const auto value = convert(words[i]);
    if (!value) return MStatus::kFailure;
    out = static_cast<T>(*value);
    return MStatus::kSuccess;
}

MStatus read(const std::vector<MString>& words, unsigned int i, bool& out) {
    return read(words, i, as_boolean, out);
}
MStatus read(const std::vector<MString>& words, unsigned int i, int& out) {
    return read(words, i, as_integer, out);
}
MStatus read(const std::vector<MString>& words, unsigned int i, double& out) {
    return read(words, i, as_number, out);
}
MStatus read(const std::vector<MString>& words, unsigned int i, unsigned int& out) {
    int value = -1;
    const MStatus status = read(words, i, as_integer, value);
    if (!status || value < 0) return status ? MStatus(MStatus::kFailure) : status;
    out = static_cast<unsigned int>(value);
    return status;
}
MStatus read(const std::vector<MString>& words, unsigned int i, MString& out) {
    if (i >= words.size()) return MStatus::kInvalidParameter;
    out = words[i];
    return MStatus::kSuccess;
}
MStatus read(const std::vector<MString>& words, unsigned int i, MTime& out) {
    double seconds = 0.0;
    const MStatus status = read(words, i, as_seconds, seconds);
    if (status) out = MTime(MTime(seconds, MTime::kSeconds).as(MTime::uiUnit()), MTime::uiUnit());
    return status;
}
MStatus read(const std::vector<MString>& words, unsigned int i, MAngle& out) {
    double radians = 0.0;
    const MStatus status = read(words, i, as_radians, radians);
    if (status) out = MAngle(radians, MAngle::kRadians);
    return status;
}
MStatus read(const std::vector<MString>& words, unsigned int i, MDistance& out) {
    double centimetres = 0.0;
    const MStatus status = read(words, i, as_centimetres, centimetres);
    if (status) out = MDistance(centimetres, MDistance::kCentimeters);
    return status;
}

template<typename T>
T value_or_status(const std::vector<MString>& words, unsigned int i, MStatus* status) {
    T out{};
    put(status, read(words, i, out));
    return out;
}

} // namespace

const unsigned int MArgList::kInvalidArgIndex = ~0u;

unsigned int MArgList::length(MStatus* status) const {
    return succeed(status, static_cast<unsigned int>(words_->all.size()));
}
bool MArgList::asBool(unsigned int i, MStatus* s) const {
    return value_or_status<bool>(words_->all, i, s);
}
int MArgList::asInt(unsigned int i, MStatus* s) const {
    return value_or_status<int>(words_->all, i, s);
}
double MArgList::asDouble(unsigned int i, MStatus* s) const {
    return value_or_status<double>(words_->all, i, s);
}
MString MArgList::asString(unsigned int i, MStatus* s) const {
    return value_or_status<MString>(words_->all, i, s);
}
MTime MArgList::asTime(unsigned int i, MStatus* s) const {
    return value_or_status<MTime>(words_->all, i, s);
}
MAngle MArgList::asAngle(unsigned int i, MStatus* s) const {
    return value_or_status<MAngle>(words_->all, i, s);
}
MDistance MArgList::asDistance(unsigned int i, MStatus* s) const {
    return value_or_status<MDistance>(words_->all, i, s);
}
MStatus MArgList::get(unsigned int i, bool& value) const {
    return read(words_->all, i, value);
}
MStatus MArgList::get(unsigned int i, int& value) const {
    return read(words_->all, i, value);
}
MStatus MArgList::get(unsigned int i, double& value) const {
    return read(words_->all, i, value);
}
MStatus MArgList::get(unsigned int i, MString& value) const {
    return read(words_->all, i, value);
}

unsigned int MArgList::flagIndex(const char* shortName, const char* longName) const {
    const auto bare = [](std::string_view name) { return name.starts_with('-') ? name.substr(1) : name; };
    for (unsigned int i = 0; i < words_->all.size(); ++i) {
        const std::string& word = Access::text(words_->all[i]);
        if (!word.starts_with('-')) continue;
        for (const char* name : {shortName, longName}) {
            if (name && bare(name) == bare(word)) return i;
        }
    }
    return kInvalidArgIndex;
}

MStatus MArgList::addArg(bool value) {
    return addArg(MString(value ? "1" : "0"));
}
MStatus MArgList::addArg(int value) {
    MString word;
    return addArg(word += value);
}
MStatus MArgList::addArg(double value) {
    return addArg(MString() + value);
}
MStatus MArgList::addArg(const MString& value) {
    words_->all.push_back(value);
    return MStatus::kSuccess;
}

MArgParser::MArgParser(const MSyntax& syntax, const MArgList& words, MStatus* status) {
    auto sorted = parse_arguments(Access::syntax(syntax), Access::words(words));
    put(status, sorted ? MStatus::kSuccess : MStatus::kInvalidParameter);
    if (sorted)
        *parsed_ = std::move(*sorted);
    else
        Session::current().error(sorted.error().message);
}

bool MArgParser::isFlagSet(const char* flag, MStatus* status) const {
    put(status, parsed_->syntax.find(name_of(flag)) >= 0 ? MStatus::kSuccess : MStatus::kInvalidParameter);
    return parsed_->use_of(name_of(flag)) != nullptr;
}

bool MArgParser::isEdit(MStatus* status) const {
    return succeed(status, parsed_->edit);
}
bool MArgParser::isQuery(MStatus* status) const {
    return succeed(status, parsed_->query);
}
unsigned int MArgParser::numberOfFlagsUsed() const {
    return static_cast<unsigned int>(parsed_->uses.size());
}

unsigned int MArgParser::numberOfFlagUses(const char* flag) const {
    const std::vector<std::size_t>* places = parsed_->places_of(name_of(flag));
    return places ? static_cast<unsigned int>(places->size()) : 0;
}

MStatus MArgParser::getFlagArgumentPosition(const char* flag, unsigned int use, unsigned int& position) const {
    const ParsedArguments::Use* found = parsed_->use_of(name_of(flag), static_cast<int>(use & 0x7fffffffu));
    if (!found) return MStatus::kInvalidParameter;
    position = found->first;
    return MStatus::kSuccess;
}

MStatus MArgParser::getFlagArgumentList(const char* flag, unsigned int use, MArgList& arguments) const {
    const ParsedArguments::Use* found = parsed_->use_of(name_of(flag), static_cast<int>(use & 0x7fffffffu));
    if (!found) return MStatus::kInvalidParameter;
    Access::words(arguments) = found->arguments;
    return MStatus::kSuccess;
}

namespace {

template<typename T>
MStatus flag_argument(const ParsedArguments& parsed, const char* flag, unsigned int i, T& value) {
    const ParsedArguments::Use* use = parsed.use_of(name_of(flag));
    return use ? read(use->arguments, i, value) : MStatus(MStatus::kInvalidParameter);
}

template<typename T>
T flag_value(const ParsedArguments& parsed, const char* flag, unsigned int i, MStatus* status) {
    T out{};
    put(status, flag_argument(parsed, flag, i, out));
    return out;
}

} // namespace

MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, bool& v) const {
    return flag_argument(*parsed_, f, i, v);
}
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, int& v) const {
    return flag_argument(*parsed_, f, i, v);
}
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, unsigned int& v) const {
    return flag_argument(*parsed_, f, i, v);
}
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, double& v) const {
    return flag_argument(*parsed_, f, i, v);
}
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, MString& v) const {
    return flag_argument(*parsed_, f, i, v);
}
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, MTime& v) const {
    return flag_argument(*parsed_, f, i, v);
}
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, MAngle& v) const {
    return flag_argument(*parsed_, f, i, v);
}
MStatus MArgParser::getFlagArgument(const char* f, unsigned int i, MDistance& v) const {
    return flag_argument(*parsed_, f, i, v);
}
bool MArgParser::flagArgumentBool(const char* f, unsigned int i, MStatus* s) const {
    return flag_value<bool>(*parsed_, f, i, s);
}
int MArgParser::flagArgumentInt(const char* f, unsigned int i, MStatus* s) const {
    return flag_value<int>(*parsed_, f, i, s);
}
double MArgParser::flagArgumentDouble(const char* f, unsigned int i, MStatus* s) const {
    return flag_value<double>(*parsed_, f, i, s);
}
MString MArgParser::flagArgumentString(const char* f, unsigned int i, MStatus* s) const {
    return flag_value<MString>(*parsed_, f, i, s);
}

MStatus MArgParser::getCommandArgument(unsigned int i, bool& value) const {
    return read(parsed_->arguments, i, value);
}
MStatus MArgParser::getCommandArgument(unsigned int i, int& value) const {
    return read(parsed_->arguments, i, value);
}
MStatus MArgParser::getCommandArgument(unsigned int i, double& value) const {
    return read(parsed_->arguments, i, value);
}
MStatus MArgParser::getCommandArgument(unsigned int i, MString& value) const {
    return read(parsed_->arguments, i, value);
}
bool MArgParser::commandArgumentBool(unsigned int i, MStatus* s) const {
    return value_or_status<bool>(parsed_->arguments, i, s);
}
int MArgParser::commandArgumentInt(unsigned int i, MStatus* s) const {
    return value_or_status<int>(parsed_->arguments, i, s);
}
double MArgParser::commandArgumentDouble(unsigned int i, MStatus* s) const {
    return value_or_status<double>(parsed_->arguments, i, s);
}
MString MArgParser::commandArgumentString(unsigned int i, MStatus* s) const {
    return value_or_status<MString>(parsed_->arguments, i, s);
}

MStatus MArgParser::getObjects(MStringArray& names) const {
    names.clear();
    for (const MString& name : parsed_->objects) names.append(name);
    return MStatus::kSuccess;
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int i, MSelectionList& list) const {
    MString name;
    const MStatus status = MArgParser::getFlagArgument(flag, i, name);
    list.clear();
    return status ? list.add(name) : status;
}

MStatus MArgDatabase::getCommandArgument(unsigned int i, MSelectionList& list) const {
    MString name;
    const MStatus status = MArgParser::getCommandArgument(i, name);
    list.clear();
    return status ? list.add(name) : status;
}

MStatus MArgDatabase::getObjects(MSelectionList& list) const {
    list.clear();
    const ParsedArguments& parsed = Access::parsed(*this);
    if (parsed.objects.empty() && parsed.syntax.selection_as_default) {
        Access::list(list) = Access::scene().selection;
        return MStatus::kSuccess;
    }
    for (const MString& name : parsed.objects) {
        if (const MStatus status = list.add(name); !status) return status;
    }
    return MStatus::kSuccess;
}
