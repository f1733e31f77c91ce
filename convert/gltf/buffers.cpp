#include "convert/gltf/buffers.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace vor2::convert {

void expect_to_fit(double bytes) {
    if (bytes > static_cast<double>(most_buffer_bytes))
        throw std::length_error("comes to more than the 2 GiB that a glTF file's buffer can hold");
}

GltfBuffers::GltfBuffers(tinygltf::Model& model) : model_(model) {
    if (model_.buffers.empty()) model_.buffers.emplace_back();
}

int GltfBuffers::view(std::span<const std::uint8_t> bytes, Use use) {
    std::vector<unsigned char>& data = model_.buffers[0].data;
    expect_to_fit(static_cast<double>(data.size()) + static_cast<double>(bytes.size()));
    data.resize((data.size() + 3) / 4 * 4);
    tinygltf::BufferView view;
    view.buffer = 0;
    view.byteOffset = data.size();
    view.byteLength = bytes.size();
    if (use == Use::vertices) view.target = TINYGLTF_TARGET_ARRAY_BUFFER;
    if (use == Use::indices) view.target = TINYGLTF_TARGET_ELEMENT_ARRAY_BUFFER;
    data.insert(data.end(), bytes.begin(), bytes.end());
    model_.bufferViews.push_back(std::move(view));
    return static_cast<int>(model_.bufferViews.size() - 1);
}

template<class NUMBER>
int GltfBuffers::accessor(std::span<const NUMBER> numbers, int width, int type, int component_type, Use use) {
    tinygltf::Accessor accessor;
    accessor.bufferView = view({reinterpret_cast<const std::uint8_t*>(numbers.data()), numbers.size_bytes()}, use);
    accessor.componentType = component_type;
    accessor.type = type;
    accessor.count = numbers.size() / static_cast<std::size_t>(width);
    model_.accessors.push_back(std::move(accessor));
    return static_cast<int>(model_.accessors.size() - 1);
}

int GltfBuffers::floats(std::span<const float> numbers, int width, Use use, bool bounds) {
    const int type = width == 1 ? TINYGLTF_TYPE_SCALAR : width; // the types of vectors are their widths
    const int index = accessor(numbers, width, type, TINYGLTF_COMPONENT_TYPE_FLOAT, use);
    if (!bounds) return index;
    const auto size = static_cast<std::size_t>(width);
    std::vector<double> least(size, std::numeric_limits<double>::max()),
        most(size, std::numeric_limits<double>::lowest());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        least[i % size] = std::min(least[i % size], static_cast<double>(numbers[i]));
        most[i % size] = std::max(most[i % size], static_cast<double>(numbers[i]));
    }
    model_.accessors.back().minValues = std::move(least);
    model_.accessors.back().maxValues = std::move(most);
    return index;
}

int GltfBuffers::indices(std::span<const std::uint32_t> numbers) {
    // The largest number of 16 bits means the end of a strip, and is no index.
    if (std::all_of(numbers.begin(), numbers.end(), [](std::uint32_t index) { return index < 0xFFFF; })) {
        const std::vector<std::uint16_t> small(numbers.begin(), numbers.end());
        return accessor<std::uint16_t>(small, 1, TINYGLTF_TYPE_SCALAR, TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT,
                                       Use::indices);
    }
    return accessor(numbers, 1, TINYGLTF_TYPE_SCALAR, TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT, Use::indices);
}

int GltfBuffers::joints(std::span<const std::uint16_t> numbers) {
    return accessor(numbers, 4, TINYGLTF_TYPE_VEC4, TINYGLTF_COMPONENT_TYPE_UNSIGNED_SHORT, Use::vertices);
}

int GltfBuffers::matrices(std::span<const float> numbers) {
    return accessor(numbers, 16, TINYGLTF_TYPE_MAT4, TINYGLTF_COMPONENT_TYPE_FLOAT, Use::plain);
}

int GltfBuffers::sparse_triples(std::size_t count, std::span<const std::uint32_t> places,
                                std::span<const float> numbers) {
    tinygltf::Accessor accessor;
    accessor.componentType = TINYGLTF_COMPONENT_TYPE_FLOAT;
    accessor.type = TINYGLTF_TYPE_VEC3;
    accessor.count = count;
    accessor.minValues.assign(3, places.size() < count ? 0 : std::numeric_limits<double>::max());
    accessor.maxValues.assign(3, places.size() < count ? 0 : std::numeric_limits<double>::lowest());
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        accessor.minValues[i % 3] = std::min(accessor.minValues[i % 3], static_cast<double>(numbers[i]));
        accessor.maxValues[i % 3] = std::max(accessor.maxValues[i % 3], static_cast<double>(numbers[i]));
    }
    if (!places.empty()) {
        accessor.sparse.isSparse = true;
        accessor.sparse.count = static_cast<int>(places.size());
        accessor.sparse.indices = {
            0, view({reinterpret_cast<const std::uint8_t*>(places.data()), places.size_bytes()}, Use::plain),
            TINYGLTF_COMPONENT_TYPE_UNSIGNED_INT};
        accessor.sparse.values = {
            view({reinterpret_cast<const std::uint8_t*>(numbers.data()), numbers.size_bytes()}, Use::plain), 0};
    }
    model_.accessors.push_back(std::move(accessor));
    return static_cast<int>(model_.accessors.size() - 1);
}

int GltfBuffers::bytes(std::span<const std::uint8_t> bytes) {
    return view(bytes, Use::plain);
}

} // namespace vor2::convert
