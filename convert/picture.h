#pragma once

/// As much of pictures as a scene's converter has to know.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace vor2::convert {

/// "image/png" or "image/jpeg", the two kinds that glTF knows; empty for any other.
[[nodiscard]] std::string_view picture_type(std::span<const std::uint8_t> bytes);

/// The same picture as PNG: from TGA, BMP, PSD, GIF and the like. Nothing for what can't be decoded, or is more than
/// 8192 points wide or high.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> as_png(std::span<const std::uint8_t> bytes);

/// One PNG with the colours of the first picture and, as opacity, what is left by the transparency that the second one
/// tells by its brightness, at the first one's size.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> with_transparency(std::span<const std::uint8_t> colours,
                                                                         std::span<const std::uint8_t> transparency);

enum class PictureAlpha { none, cut_out, smooth };

/// Whether a picture has clear points: none, clear and opaque ones only (with thin edges between), or others. A picture
/// that can't be decoded has none.
[[nodiscard]] PictureAlpha alpha_of(std::span<const std::uint8_t> bytes);

} // namespace vor2::convert
