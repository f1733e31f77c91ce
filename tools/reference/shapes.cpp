#include "tools/reference/shapes.h"

#include "format/scene/detail/root_chunks.h"
#include "format/tracks/tracks.h"
#include "inspect/json_writer.h"
#include "tools/reference/member_comments.h"

#include <cxxabi.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <type_traits>
#include <typeinfo>

namespace reference {
namespace {

using vor2::inspect::shortest;

template<class T>
std::string type_name() {
    const std::unique_ptr<char, decltype(&std::free)> text(
        abi::__cxa_demangle(typeid(T).name(), nullptr, nullptr, nullptr), &std::free);
    std::string name = text.get();
    constexpr std::string_view scope = "VOR2_LOADER::";
    for (std::size_t at = 0; (at = name.find(scope, at)) != std::string::npos;) name.erase(at, scope.size());
    return name;
}
/// The two sorts of references differ in a number, which a compiler may write as 15u.
template<>
std::string type_name<VOR2_XREF<15>>() {
    return "VOR2_XREF<15>";
}
template<>
std::string type_name<VOR2_XREF<20>>() {
    return "VOR2_XREF<20>";
}

/// What a track tells of itself: its fields' names, and their types but for elements that aren't there.
class TrackFields final : public RECORD_VISITOR {
public:
    std::vector<Field> fields;

    void boolean(std::string_view name, bool) override { add(name, FieldType::flag); }
    void signed_number(std::string_view name, i32) override { add(name, FieldType::signed_number); }
    void unsigned_number(std::string_view name, u32) override { add(name, FieldType::unsigned_number); }
    void real(std::string_view name, f32) override { add(name, FieldType::real); }
    void long_real(std::string_view name, f64) override { add(name, FieldType::long_real); }
    void text(std::string_view name, const TEXT&) override { add(name, FieldType::text); }
    void tuple(std::string_view name, std::span<const f32> components) override {
        add(name, FieldType::tuple, false, static_cast<u32>(components.size()));
    }
    void reals(std::string_view name, std::span<const f32>, u32 width) override {
        add(name, width == 1 ? FieldType::real : FieldType::tuple, true, width);
    }
    void signed_numbers(std::string_view name, std::span<const i32>) override {
        add(name, FieldType::signed_number, true);
    }
    void unsigned_numbers(std::string_view name, std::span<const u32>) override {
        add(name, FieldType::unsigned_number, true);
    }
    void begin_object(std::string_view name, std::string_view) override { add(name, FieldType::record); }
    void end_object() override {}
    void absent(std::string_view name) override { add(name, FieldType::optional); }
    void begin_list(std::string_view name, u64) override { add(name, FieldType::record, true); }
    void end_list() override {}

private:
    void add(std::string_view name, FieldType type, bool is_list = false, u32 width = 1) {
        fields.push_back({.name = std::string(name), .type = type, .is_list = is_list, .width = width});
    }
};

class Collector {
public:
    explicit Collector(const std::string& folder) : comments_(member_comments(folder)) {}

    /// `SAMPLE` is a class that can be made and has `T` as itself or a base: its fields tell the defaults.
    template<class T, class SAMPLE = T>
    std::string add_class() {
        std::string name = type_name<T>();
        if (shapes.classes.contains(name)) return name;
        shapes.classes[name] = {.name = name, .told_name = std::string(T::record().class_name)};
        Class shape = shapes.classes[name];
        const SAMPLE sample;
        T::record().each([&](const auto& field) { add_field(shape, sample, field); });
        shapes.classes[name] = shape;
        return name;
    }
    template<class FAMILY>
    std::string add_family() {
        std::string name = type_name<FAMILY>();
        if (shapes.families.contains(name)) return name;
        Family family{.name = name, .are_tracks = std::derived_from<FAMILY, VOR2_ANIMATABLE>};
        shapes.families[name] = family;
        CLASSES_OF<FAMILY>::each([&]<class MEMBER>(u32 number, const MEMBER*) {
            if constexpr (std::derived_from<MEMBER, VOR2_ANIMATABLE>) {
                family.classes.emplace_back(number, add_track<MEMBER>());
            } else {
                family.classes.emplace_back(number, add_class<MEMBER>());
            }
        });
        shapes.families[name] = family;
        return name;
    }
    template<class INSTANCE>
    void add_instance_chunk() {
        shapes.chunks.push_back(
            {.id = INSTANCE::CHUNK_ID, .of = add_class<INSTANCE>(), .has_kind = true, .is_instance = true});
    }

    // A row of the root's chunks each.
    template<class OBJECT>
    void add_row(const VALUE_CHUNK<OBJECT>& row) {
        add_chunk(row, add_class<OBJECT>());
    }
    template<class OBJECT>
    void add_row(const OPTIONAL_CHUNK<OBJECT>& row) {
        add_chunk(row, add_class<OBJECT>());
    }
    template<class OBJECT>
    void add_row(const OBJECTS_CHUNK<OBJECT>& row) {
        add_chunk(row, add_class<OBJECT>());
    }
    template<class FAMILY>
    void add_row(const FAMILY_CHUNK<FAMILY>& row) {
        add_chunk(row, add_family<FAMILY>());
        shapes.chunks.back().has_kind = true;
    }
    void add_row(const INSTANCES_CHUNK& row) {
        shapes.root_members.emplace_back(row.name);
        shapes.instance_kinds.emplace_back(row.instance_kind, row.name);
    }

    Shapes shapes;

private:
    template<class ROW>
    void add_chunk(const ROW& row, const std::string& of) {
        shapes.root_members.emplace_back(row.name);
        shapes.chunks.push_back({.id = row.chunk_id, .of = of, .member = std::string(row.name)});
    }
    template<class TRACK>
    std::string add_track() {
        using VALUE = typename TRACK::VALUE_TYPE;
        const TRACK track;
        TrackFields told;
        track.describe(told);
        if constexpr (HAS_RECORD<VALUE>) told.fields.back().of = add_class<VALUE>();
        std::string name(track.class_name());
        shapes.classes[name] = {.name = name, .told_name = name, .fields = told.fields};
        return name;
    }

    /// What every field says beside its type.
    template<class WORDS>
    Field begin_field(const Class& shape, const WORDS& words) const {
        Field field{.name = std::string(words.name)};
        const FIELD_RULES& rules = words.rules;
        if (std::isfinite(rules.first_version)) field.since = rules.first_version;
        if (std::isfinite(rules.last_version)) field.up_to = rules.last_version;
        field.is_written = rules.is_written;
        const auto comment = comments_.find({shape.name.substr(0, shape.name.find('<')), field.name});
        if (comment != comments_.end()) field.meaning = comment->second;
        return field;
    }
    template<class SAMPLE, class BASE>
    void add_field(Class& shape, const SAMPLE&, const BASE_FIELD<BASE>& base) {
        Field field = begin_field(shape, base);
        field.type = FieldType::base;
        field.of = add_class<BASE, SAMPLE>();
        shape.fields.push_back(field);
    }
    template<class SAMPLE>
    void add_field(Class& shape, const SAMPLE&, const VERTICES_FIELD& vertices) const {
        Field field = begin_field(shape, vertices);
        field.type = FieldType::vertices;
        field.is_list = true;
        shape.fields.push_back(field);
    }
    template<class SAMPLE, class FAMILY>
    void add_field(Class& shape, const SAMPLE&, const PASSED_OVER_FIELD<FAMILY>& passed_over) {
        Field field = begin_field(shape, passed_over);
        field.type = FieldType::optional;
        field.of = add_family<FAMILY>();
        shape.fields.push_back(field);
    }
    template<class SAMPLE, class KIND, class OWNER, class MEMBER>
    void add_field(Class& shape, const SAMPLE& sample, const FIELD<KIND, OWNER, MEMBER>& told) {
        if constexpr (!IS_STORED<KIND>) {
            // A mesh names its vertices again, since they stand among the fields of a base.
            if constexpr (std::derived_from<OWNER, VOR2_TRI_OBJECT>)
                shape.vertex_class = add_class<typename MEMBER::value_type>();
        } else {
            Field field = begin_field(shape, told);
            set_type(field, static_cast<const KIND*>(nullptr), sample.*told.member);
            shape.fields.push_back(field);
        }
    }

    template<class T>
    static void set_type(Field& field, const VALUE_KIND*, const T& value) {
        if constexpr (std::same_as<T, u32>) {
            field.type = FieldType::unsigned_number;
            field.default_value = std::to_string(value);
        } else if constexpr (std::same_as<T, i32>) {
            field.type = FieldType::signed_number;
            field.default_value = std::to_string(value);
        } else if constexpr (std::same_as<T, f32> || std::same_as<T, f64>) {
            field.type = std::same_as<T, f32> ? FieldType::real : FieldType::long_real;
            field.default_value = shortest(value);
        } else {
            field.type = FieldType::tuple;
            const auto parts = detail::components(value);
            field.width = static_cast<u32>(parts.size());
            for (const f32 part : parts)
                field.default_value += (field.default_value.empty() ? "[" : ", ") + shortest(part);
            field.default_value += "]";
        }
    }
    static void set_type(Field& field, const MATRIX_COLUMNS_KIND*, const MATRIX_3X4&) {
        field.type = FieldType::columns;
    }
    static void set_type(Field& field, const FLAG_KIND*, bool value) {
        field.type = FieldType::flag;
        field.default_value = value ? "true" : "false";
    }
    static void set_type(Field& field, const TEXT_KIND*, const TEXT& value) {
        field.type = FieldType::text;
        field.default_value = vor2::inspect::quoted(value.view());
    }
    template<class T>
    void set_type(Field& field, const OBJECT_KIND*, const T&) {
        field.type = FieldType::record;
        field.of = add_class<T>();
    }
    template<class FAMILY>
    void set_type(Field& field, const OPTIONAL_KIND*, const OWNED<FAMILY>&) {
        field.type = FieldType::optional;
        field.of = add_family<FAMILY>();
        field.default_value = "null";
    }
    template<class FAMILY>
    void set_type(Field& field, const NESTED_KIND*, const OWNED<FAMILY>& object) {
        set_type(field, static_cast<const OPTIONAL_KIND*>(nullptr), object);
    }
    template<class ELEMENT_KIND, bool COUNTS, class T>
    void set_type(Field& field, const LIST_KIND<ELEMENT_KIND, COUNTS>*, const ARRAY<T>&) {
        set_type(field, static_cast<const ELEMENT_KIND*>(nullptr), T());
        field.is_list = true;
        field.default_value = "[]";
    }

    std::map<std::pair<std::string, std::string>, std::string> comments_;
};

} // namespace

Shapes collect_shapes(const std::string& folder) {
    Collector collector(folder);
    each_chunk_row([&](const auto& row) { collector.add_row(row); });
    Shapes& shapes = collector.shapes;
    shapes.chunks.push_back({.id = VOR2_ARRAY_LENGTH_HELPER::CHUNK_ID,
                             .of = collector.add_class<VOR2_ARRAY_LENGTH_HELPER>(),
                             .member = "array_lengths"});
    collector.add_instance_chunk<VOR2_INSTANCE>();
    collector.add_instance_chunk<VOR2_GEOM_INSTANCE>();
    collector.add_instance_chunk<VOR2_GEOM_INSTANCE_DIFFERING_MATERIALS>();
    collector.add_instance_chunk<VOR2_GEOM_INSTANCE_DIFFERING_SUB_OBJECTS>();
    std::sort(shapes.chunks.begin(), shapes.chunks.end(), [](const Chunk& a, const Chunk& b) { return a.id < b.id; });
    std::sort(shapes.instance_kinds.begin(), shapes.instance_kinds.end());
    return std::move(collector.shapes);
}

std::vector<Field> Shapes::flat_fields(const std::string& class_name) const {
    std::vector<Field> fields;
    for (const Field& field : class_of(class_name).fields) {
        if (field.type != FieldType::base) {
            fields.push_back(field);
            continue;
        }
        for (Field inner : flat_fields(field.of)) {
            if (field.since) inner.since = std::max(*field.since, inner.since.value_or(*field.since));
            if (field.up_to) inner.up_to = std::min(*field.up_to, inner.up_to.value_or(*field.up_to));
            inner.is_written = inner.is_written && field.is_written;
            fields.push_back(inner);
        }
    }
    for (Field& field : fields) {
        if (field.type != FieldType::vertices || class_of(class_name).vertex_class.empty()) continue;
        field.type = FieldType::record;
        field.of = class_of(class_name).vertex_class;
        field.default_value = "[]";
    }
    return fields;
}

std::string version_text(f32 version) {
    const std::string text = shortest(version);
    return text.size() == 3 ? text + "0" : text;
}

std::optional<f32> gone_from(const Field& field) {
    if (!field.up_to) return {};
    const f32 next = std::nextafter(*field.up_to, 2.0F);
    return version_text(next).size() < version_text(*field.up_to).size() ? std::optional(next) : std::nullopt;
}

std::string versions_text(const Field& field) {
    std::string text;
    if (field.since) text = "from " + version_text(*field.since);
    if (!field.up_to) return text;
    const std::optional<f32> gone = gone_from(field);
    return text + (text.empty() ? "" : ", ") +
           (gone ? "below " + version_text(*gone) : "up to " + version_text(*field.up_to));
}

} // namespace reference
