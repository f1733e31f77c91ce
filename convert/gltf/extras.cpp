#include "convert/gltf/extras.h"

#include "convert/properties.h"

#include <cmath>

namespace vor2::convert {
namespace {

using namespace VOR2_LOADER;
using tinygltf::Value;

// JSON has no word for what is no number.
Value json_of(f32 number) {
    return Value(std::isfinite(number) ? static_cast<double>(number) : 0.0);
}
Value json_of(i32 number) {
    return Value(number);
}
Value json_of(const VECTOR_3& v) {
    return Value(Value::Array{json_of(v.x), json_of(v.y), json_of(v.z)});
}
Value json_of(const VECTOR_4& v) {
    return Value(Value::Array{json_of(v.x), json_of(v.y), json_of(v.z), json_of(v.w)});
}

template<class TRACK>
Value track_json(const TRACK& track) {
    if (track.key_values().size() == 1) return json_of(track.key_values()[0]);
    Value::Array times, values;
    for (const f32 time : track.key_times()) times.push_back(json_of(time));
    for (const auto& value : track.key_values()) values.push_back(json_of(value));
    return Value(Value::Object{{"times", Value(std::move(times))}, {"values", Value(std::move(values))}});
}

template<class LIST>
void put_tracks(Value::Object& out, const LIST& list) {
    for (const auto& property : list) {
        if (property.track) out[utf8_of(property.name)] = track_json(*property.track);
    }
}

template<class TRACK, class LIST>
void add_track(LIST& list, const std::string& name, const Value& value, auto read) {
    auto track = make_owned<TRACK>();
    const bool moves = value.IsObject();
    const Value& values = moves ? value.Get("values") : value;
    if (!moves) track->add_key(read(value), 0.0F);
    for (std::size_t i = 0; moves && i < std::min(values.ArrayLen(), value.Get("times").ArrayLen()); ++i)
        track->add_key(read(values.Get(static_cast<int>(i))),
                       static_cast<f32>(value.Get("times").Get(static_cast<int>(i)).GetNumberAsDouble()));
    auto& property = list.emplace_back();
    property.name = text_of(name);
    property.track = std::move(track);
}

void read_property(const std::string& name, const Value& value, VOR2_EXTENDED_PROPERTIES& properties) {
    const bool moves = value.IsObject() && value.Has("values") && value.Get("values").IsArray() && value.Has("times");
    if (value.IsObject() && !moves) return;
    const Value& sample = moves ? value.Get("values").Get(0) : value;
    const std::size_t numbers =
        sample.IsArray() && sample.ArrayLen() > 0 && sample.Get(0).IsNumber() ? sample.ArrayLen() : 0;
    const auto real = [](const Value& v) { return static_cast<f32>(v.GetNumberAsDouble()); };
    if (sample.IsInt()) {
        add_track<VOR2_ANIMATABLE_INT32_RLE>(properties.int_properties, name, value,
                                             [](const Value& v) { return v.GetNumberAsInt(); });
    } else if (sample.IsReal()) {
        add_track<VOR2_ANIMATABLE_FLOAT32_LINEAR>(properties.float_properties, name, value, real);
    } else if (numbers == 3) {
        add_track<VOR2_ANIMATABLE_VECTOR_3_LINEAR>(properties.vector_3_properties, name, value, [](const Value& v) {
            const std::vector<double> n = numbers_of(v, 3);
            return n.empty() ? VECTOR_3(0.0F, 0.0F, 0.0F) : VECTOR_3(n[0], n[1], n[2]);
        });
    } else if (numbers == 4) {
        add_track<VOR2_ANIMATABLE_VECTOR_4_LINEAR>(properties.vector_4_properties, name, value, [](const Value& v) {
            const std::vector<double> n = numbers_of(v, 4);
            if (n.empty()) return VECTOR_4(0.0F, 0.0F, 0.0F, 0.0F);
            return VECTOR_4(static_cast<f32>(n[0]), static_cast<f32>(n[1]), static_cast<f32>(n[2]),
                            static_cast<f32>(n[3]));
        });
    } else if (value.IsString() || value.IsArray()) {
        auto& strings = properties.string_arrays.emplace_back();
        strings.name = text_of(name);
        if (value.IsString()) strings.strings.push_back(text_of(value.Get<std::string>()));
        for (std::size_t i = 0; i < value.ArrayLen(); ++i) {
            const Value& text = value.Get(static_cast<int>(i));
            if (text.IsString()) strings.strings.push_back(text_of(text.Get<std::string>()));
        }
    }
}

} // namespace

Value value_of(const TEXT& text) {
    return Value(utf8_of(text));
}

void put(Value& object, const std::string& key, Value value) {
    if (!object.IsObject()) object = Value(Value::Object());
    object.Get<Value::Object>()[key] = std::move(value);
}

void put_properties(Value& object, const VOR2_EXTENDED_PROPERTIES& properties) {
    Value::Object out;
    for (const VOR2_NAMED_STRING_ARRAY& strings : properties.string_arrays) {
        Value::Array texts;
        for (const TEXT& text : strings.strings) texts.push_back(value_of(text));
        out[utf8_of(strings.name)] = Value(std::move(texts));
    }
    put_tracks(out, properties.int_properties);
    put_tracks(out, properties.float_properties);
    put_tracks(out, properties.vector_3_properties);
    put_tracks(out, properties.vector_4_properties);
    if (!out.empty()) put(object, "properties", Value(std::move(out)));
}

void read_properties(const Value& object, VOR2_EXTENDED_PROPERTIES& properties) {
    if (!object.IsObject() || !object.Has("properties") || !object.Get("properties").IsObject()) return;
    for (const auto& [name, value] : object.Get("properties").Get<Value::Object>())
        read_property(name, value, properties);
}

std::vector<double> numbers_of(const Value& list, std::size_t count) {
    std::vector<double> numbers;
    if (list.ArrayLen() != count) return numbers;
    for (std::size_t i = 0; i < count; ++i) numbers.push_back(list.Get(static_cast<int>(i)).GetNumberAsDouble());
    return numbers;
}

} // namespace vor2::convert
