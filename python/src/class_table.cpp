#include "python/src/class_builder.h"

#include <map>

namespace vor2::python {

std::string python_name(std::string_view class_name) {
    std::string name;
    for (const char c : class_name) {
        if (c == '<') name += '_';
        if (c != '<' && c != '>') name += c;
    }
    return name;
}

const Field* ClassInfo::find(std::string_view field_name) const {
    for (const Field& field : fields) {
        if (field.name == field_name) return &field;
    }
    return nullptr;
}

ClassInfo::Numbers ClassInfo::as_numbers() const {
    Numbers numbers;
    std::ptrdiff_t next = 0;
    for (const Field& field : fields) {
        if (field.kind != Kind::number && field.kind != Kind::tuple) return {};
        if (field.number == 'd') return {};
        if (numbers.width == 0) {
            numbers = {field.number, 0, field.offset};
            next = field.offset;
        }
        if (field.number != numbers.number || field.offset != next) return {};
        numbers.width += field.width;
        next += static_cast<std::ptrdiff_t>(field.width * sizeof(float));
    }
    return numbers;
}

namespace {

/// The root, and everything that its objects hold.
std::vector<const ClassInfo*> gather() {
    std::vector<const ClassInfo*> waiting{class_of<VOR2>()};
    std::map<std::string, const ClassInfo*> found;
    while (!waiting.empty()) {
        const ClassInfo* info = waiting.back();
        waiting.pop_back();
        if (!found.emplace(info->name, info).second) continue;
        for (const Field& field : info->fields) {
            if (field.record != nullptr) waiting.push_back(field.record());
            if (field.family == nullptr) continue;
            for (const ClassInfo* one : field.family()) waiting.push_back(one);
        }
    }
    std::vector<const ClassInfo*> classes;
    classes.reserve(found.size());
    for (const auto& [name, info] : found) classes.push_back(info);
    std::stable_sort(classes.begin(), classes.end(),
                     [](const ClassInfo* a, const ClassInfo* b) { return a->bases.size() < b->bases.size(); });
    return classes;
}

} // namespace

const std::vector<const ClassInfo*>& all_classes() {
    static const std::vector<const ClassInfo*> classes = gather();
    return classes;
}

const ClassInfo* find_class(std::string_view name) {
    static const std::map<std::string, const ClassInfo*, std::less<>> by_name = [] {
        std::map<std::string, const ClassInfo*, std::less<>> map;
        for (const ClassInfo* info : all_classes()) map.emplace(info->name, info);
        return map;
    }();
    const auto found = by_name.find(name);
    return found == by_name.end() ? nullptr : found->second;
}

} // namespace vor2::python
