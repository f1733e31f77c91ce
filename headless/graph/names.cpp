#include "headless/graph/names.h"

#include "headless/graph/node.h"

#include <algorithm>

namespace headless {
namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// A name taken apart where its trailing number begins; more digits than a number holds stay with the stem.
struct Numbered {
    std::string_view stem;
    std::int64_t number = 0;
    int digits = 0;
};

Numbered take_number(std::string_view name) {
    Numbered out;
    std::int64_t place = 1;
    while (out.digits < 9 && name.size() > 1 && is_digit(name.back())) {
        out.number += place * (name.back() - '0');
        place *= 10;
        ++out.digits;
        name.remove_suffix(1);
    }
    out.stem = name;
    return out;
}

std::string with_number(std::string_view stem, std::int64_t number, int digits) {
    const std::string text = std::to_string(number);
    const int padding = std::max(0, digits - static_cast<int>(text.size()));
    return std::string(stem) + std::string(padding, '0') + text;
}

void erase_from(NameMap<std::vector<Node*>>& map, const std::string& name, Node* node) {
    const auto at = map.find(name);
    if (at == map.end()) return;
    std::erase(at->second, node);
    if (at->second.empty()) map.erase(at);
}

} // namespace

std::string legal_name(std::string_view wanted) {
    std::string out;
    bool legal = false;
    for (std::size_t begin = 0; begin <= wanted.size();) {
        const std::size_t end = std::min(wanted.find(':', begin), wanted.size());
        if (end > begin && !out.empty()) out += ':';
        for (std::size_t i = begin; i < end; ++i) {
            const bool good = is_letter(wanted[i]) || (is_digit(wanted[i]) && i > begin);
            legal |= good;
            out += good ? wanted[i] : '_';
        }
        begin = end + 1;
    }
    if (!wanted.empty() && wanted.back() == ':') return {};
    return legal ? out : std::string();
}

bool is_attribute_name(std::string_view name) {
    return !name.empty() && std::ranges::all_of(name, [](char c) { return is_letter(c) || is_digit(c); });
}

std::string_view without_namespaces(std::string_view name) {
    const std::size_t colon = name.rfind(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

bool matches_pattern(std::string_view pattern, std::string_view name) {
    // On a mismatch only the last "*" needs to take one character more, so the work is at most the product of
    // the two lengths.
    std::size_t p = 0, n = 0, star = std::string_view::npos, star_end = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            star_end = n;
        } else if (p < pattern.size() && (pattern[p] == name[n] || (pattern[p] == '?' && name[n] != ':'))) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos && name[star_end] != ':') {
            p = star + 1;
            n = ++star_end;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

void NameIndex::add(Node& node) {
    if (node.type().is_dag()) {
        in_dag_[node.name()].push_back(&node);
    } else {
        outside_dag_[node.name()] = &node;
    }
}

void NameIndex::remove(Node& node) {
    forget_runs(node.name());
    if (node.type().is_dag()) return erase_from(in_dag_, node.name(), &node);
    const auto at = outside_dag_.find(node.name());
    if (at != outside_dag_.end() && at->second == &node) outside_dag_.erase(at);
}

void NameIndex::add_child(const Node& parent, Node& child) {
    children_[&parent][child.name()] = &child;
}

void NameIndex::remove_child(const Node& parent, Node& child) {
    forget_runs(child.name());
    const auto at = children_.find(&parent);
    if (at == children_.end()) return;
    const auto entry = at->second.find(child.name());
    if (entry != at->second.end() && entry->second == &child) at->second.erase(entry);
    if (at->second.empty()) children_.erase(at);
}

Node* NameIndex::find_outside_dag(std::string_view name) const {
    const auto at = outside_dag_.find(name);
    return at == outside_dag_.end() ? nullptr : at->second;
}

std::span<Node* const> NameIndex::find_in_dag(std::string_view name) const {
    const auto at = in_dag_.find(name);
    if (at == in_dag_.end()) return {};
    return at->second;
}

Node* NameIndex::find_child(const Node& parent, std::string_view name) const {
    const auto at = children_.find(&parent);
    if (at == children_.end()) return nullptr;
    const auto entry = at->second.find(name);
    return entry == at->second.end() ? nullptr : entry->second;
}

bool NameIndex::is_free(std::string_view name, std::span<Node* const> parents, const Node* self) const {
    const auto taken_by_other = [self](const Node* found) { return found && found != self; };
    if (taken_by_other(find_outside_dag(name))) return false;
    for (const Node* parent : parents) {
        if (taken_by_other(find_child(*parent, name))) return false;
    }
    // A node outside the DAG shares its name with nobody.
    if (parents.empty()) return std::ranges::none_of(find_in_dag(name), taken_by_other);
    return true;
}

std::string NameIndex::numbered(const std::string& wanted, std::span<Node* const> parents, const Node* self) const {
    const Numbered parts = take_number(wanted);
    std::int64_t number = parts.number + 1;
    const Node* scope = parents.empty() ? nullptr : parents.front();
    TakenRun& run = runs_[std::string(parts.stem)][scope];
    if (run.first <= number && number < run.next) number = run.next;
    const std::int64_t first = run.first <= number && number <= run.next ? run.first : number;
    std::string name = with_number(parts.stem, number, parts.digits);
    while (!is_free(name, parents, self)) name = with_number(parts.stem, ++number, parts.digits);
    run = {first, number};
    return name;
}

std::string NameIndex::unique_name(const std::string& wanted, std::span<Node* const> parents, const Node* self) const {
    return is_free(wanted, parents, self) ? wanted : numbered(wanted, parents, self);
}

void NameIndex::forget_runs(std::string_view name) {
    const auto at = runs_.find(take_number(name).stem);
    if (at != runs_.end()) runs_.erase(at);
}

} // namespace headless
