#include "convert/gltf/accessors.h"

#include <algorithm>
#include <cstring>

namespace vor2::convert {
namespace {

std::size_t component_size(int type) {
    switch (type) {
    case TINYGLTF_COMPONENT_TYPE_BYTE:
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return 1;
    case TINYGLTF_COMPONENT_TYPE_SHORT:
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return 2;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT:
    case TINYGLTF_COMPONENT_TYPE_FLOAT:
        return 4;
    default:
        throw BadFile("an accessor has a component type that glTF doesn't have: " + std::to_string(type));
    }
}

template<class NUMBER>
NUMBER read_as(const std::uint8_t* bytes) {
    NUMBER number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

float real(const std::uint8_t* bytes, int type, bool normalised) {
    const auto scaled = [normalised](float number, float most) {
        return normalised ? std::max(number / most, -1.0F) : number;
    };
    switch (type) {
    case TINYGLTF_COMPONENT_TYPE_BYTE:
        return scaled(read_as<std::int8_t>(bytes), 127);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return scaled(read_as<std::uint8_t>(bytes), 255);
    case TINYGLTF_COMPONENT_TYPE_SHORT:
        return scaled(read_as<std::int16_t>(bytes), 32767);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return scaled(read_as<std::uint16_t>(bytes), 65535);
    case TINYGLTF_COMPONENT_TYPE_FLOAT:
        return read_as<float>(bytes);
    default:
        return static_cast<float>(read_as<std::uint32_t>(bytes));
    }
}

std::uint32_t whole(const std::uint8_t* bytes, int type) {
    switch (type) {
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_BYTE:
        return *bytes;
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT:
        return read_as<std::uint16_t>(bytes);
    case TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT:
        return read_as<std::uint32_t>(bytes);
    default:
        throw BadFile("an accessor holds no unsigned integers where they are needed");
    }
}

} // namespace

void GltfAccessors::spend(double bytes) {
    budget_ -= bytes;
    if (budget_ < 0) throw BadFile("names the same numbers over and over: it would come to more than it can be worth");
}

int GltfAccessors::width(int accessor) const {
    switch (element(model_.accessors, accessor, "accessor").type) {
    case TINYGLTF_TYPE_SCALAR:
        return 1;
    case TINYGLTF_TYPE_VEC2:
        return 2;
    case TINYGLTF_TYPE_VEC3:
        return 3;
    case TINYGLTF_TYPE_VEC4:
    case TINYGLTF_TYPE_MAT2:
        return 4;
    case TINYGLTF_TYPE_MAT3:
        return 9;
    case TINYGLTF_TYPE_MAT4:
        return 16;
    default:
        return 0;
    }
}

GltfAccessors::Place GltfAccessors::place(int index, std::size_t offset, std::size_t count, std::size_t size,
                                          const char* what) {
    const tinygltf::BufferView& view = element(model_.bufferViews, index, "buffer view");
    const std::vector<unsigned char>& data = element(model_.buffers, view.buffer, "buffer").data;
    if (view.byteOffset > data.size() || view.byteLength > data.size() - view.byteOffset)
        throw BadFile("buffer view " + std::to_string(index) + " reaches behind its buffer's end");
    const std::size_t stride = view.byteStride == 0 ? size : view.byteStride;
    // Each factor lies below the bytes of a file, so that no product overflows.
    const bool fits = stride <= data.size() && count <= data.size() && offset <= view.byteLength &&
                      (count == 0 || (count - 1) * stride + size <= view.byteLength - offset);
    if (!fits) throw BadFile(std::string(what) + " reaches behind the end of buffer view " + std::to_string(index));
    return {data.data() + view.byteOffset + offset, stride};
}

template<class NUMBER, class READ>
std::vector<NUMBER> GltfAccessors::numbers(int index, int wanted, READ read) {
    const tinygltf::Accessor& accessor = element(model_.accessors, index, "accessor");
    if (width(index) != wanted)
        throw BadFile("accessor " + std::to_string(index) + " has " + std::to_string(width(index)) +
                      " numbers an element in place of " + std::to_string(wanted));
    const std::size_t component = component_size(accessor.componentType),
                      size = component * static_cast<std::size_t>(wanted);
    spend(static_cast<double>(accessor.count) * static_cast<double>(size));
    std::vector<NUMBER> out(accessor.count * static_cast<std::size_t>(wanted));
    if (accessor.bufferView >= 0) {
        const Place from = place(accessor.bufferView, accessor.byteOffset, accessor.count, size, "an accessor");
        auto to = out.begin();
        for (std::size_t i = 0; i < accessor.count; ++i) {
            for (int part = 0; part < wanted; ++part)
                *to++ = read(from.first + i * from.stride + static_cast<std::size_t>(part) * component);
        }
    }
    if (accessor.sparse.isSparse) apply_sparse(accessor, wanted, read, out);
    return out;
}

template<class NUMBER, class READ>
void GltfAccessors::apply_sparse(const tinygltf::Accessor& accessor, int width, READ read, std::vector<NUMBER>& out) {
    const auto& sparse = accessor.sparse;
    if (sparse.count < 0 || sparse.indices.byteOffset < 0 || sparse.values.byteOffset < 0)
        throw BadFile("a sparse accessor has a negative count or offset");
    const auto count = static_cast<std::size_t>(sparse.count), wide = static_cast<std::size_t>(width);
    const std::size_t index_size = component_size(sparse.indices.componentType);
    const std::size_t component = component_size(accessor.componentType);
    const Place indices = place(sparse.indices.bufferView, static_cast<std::size_t>(sparse.indices.byteOffset), count,
                                index_size, "a sparse accessor");
    const Place values = place(sparse.values.bufferView, static_cast<std::size_t>(sparse.values.byteOffset), count,
                               component * wide, "a sparse accessor");
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t where = whole(indices.first + i * indices.stride, sparse.indices.componentType);
        if (where >= accessor.count)
            throw BadFile("a sparse accessor names element " + std::to_string(where) + " of " +
                          std::to_string(accessor.count));
        for (std::size_t part = 0; part < wide; ++part)
            out[where * wide + part] = read(values.first + i * values.stride + part * component);
    }
}

std::vector<float> GltfAccessors::floats(int accessor, int width) {
    const tinygltf::Accessor& numbers_of = element(model_.accessors, accessor, "accessor");
    const int type = numbers_of.componentType;
    const bool normalised = numbers_of.normalized;
    return numbers<float>(accessor, width,
                          [type, normalised](const std::uint8_t* bytes) { return real(bytes, type, normalised); });
}

std::vector<std::uint32_t> GltfAccessors::integers(int accessor, int width) {
    const int type = element(model_.accessors, accessor, "accessor").componentType;
    return numbers<std::uint32_t>(accessor, width, [type](const std::uint8_t* bytes) { return whole(bytes, type); });
}

} // namespace vor2::convert
