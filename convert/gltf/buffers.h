#pragma once

/// The one buffer of a glTF file that is written, with a view and an accessor for each list of numbers. What comes to
/// more than `most_buffer_bytes` is refused by a `std::length_error`.

#include "convert/affine.h"
#include "convert/gltf/tiny_gltf.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace vor2::convert {

enum class Use { vertices, indices, plain };

inline constexpr std::size_t most_buffer_bytes = 0x7FFF0000;
/// Refuses what would come to more, before anything is made of it.
void expect_to_fit(double bytes);

class GltfBuffers {
public:
    explicit GltfBuffers(tinygltf::Model& model);

    /// `width` numbers an element. With `bounds` the least and the largest value stand in the accessor.
    int floats(std::span<const float> numbers, int width, Use use, bool bounds = false);
    /// As 16 bits where all fit.
    int indices(std::span<const std::uint32_t> numbers);
    /// Four an element.
    int joints(std::span<const std::uint16_t> numbers);
    int matrices(std::span<const float> numbers);
    /// Triples that are zero but at `places`, which ascend.
    int sparse_triples(std::size_t count, std::span<const std::uint32_t> places, std::span<const float> numbers);
    /// A view of plain bytes, such as a picture's.
    int bytes(std::span<const std::uint8_t> bytes);

private:
    template<class NUMBER>
    int accessor(std::span<const NUMBER> numbers, int width, int type, int component_type, Use use);
    int view(std::span<const std::uint8_t> bytes, Use use);

    tinygltf::Model& model_;
};

} // namespace vor2::convert
