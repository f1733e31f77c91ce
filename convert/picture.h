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

/// One PNG with the colours of the first picture and the opacity that the second one tells, at the first one's size:
/// where a picture tells transparency, what its brightness leaves; otherwise its alpha, where it has clear points, or
/// its brightness. Without colours (no bytes) it is white, at the second one's size. Nothing where one can't be
/// decoded.
[[nodiscard]] std::optional<std::vector<std::uint8_t>>
with_opacity(std::span<const std::uint8_t> colours, std::span<const std::uint8_t> opacity, bool tells_transparency);

/// One PNG with the first picture's brightness in blue and the second one's in green, as glTF wants them, at the larger
/// one's size. One without bytes is white. Nothing where one can't be decoded, or for two without bytes.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> metallic_roughness(std::span<const std::uint8_t> metallic,
                                                                          std::span<const std::uint8_t> roughness);

enum class PictureAlpha { none, cut_out, smooth };

/// Whether a picture has clear points: none, clear and opaque ones only (with thin edges between), or others. A picture
/// that can't be decoded has none.
[[nodiscard]] PictureAlpha alpha_of(std::span<const std::uint8_t> bytes);

} // namespace vor2::convert
