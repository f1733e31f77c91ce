#include "convert/picture.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_NO_STDIO
#define STBI_NO_HDR
#define STBI_NO_LINEAR
#define STBI_MAX_DIMENSIONS 8192
#define STB_IMAGE_WRITE_STATIC
#define STB_IMAGE_WRITE_IMPLEMENTATION
#define STBI_WRITE_NO_STDIO
#ifdef __GNUC__
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
#pragma GCC diagnostic ignored "-Wmissing-field-initializers"
#ifndef __clang__
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif
#endif
#include <stb/stb_image.h>
#include <stb/stb_image_write.h>
#ifdef __GNUC__
#pragma GCC diagnostic pop
#endif

namespace vor2::convert {
namespace {

struct Free {
    void operator()(stbi_uc* points) const { std::free(points); }
};

/// Points of four bytes: red, green, blue, alpha.
struct Picture {
    std::unique_ptr<stbi_uc, Free> points;
    int width = 0, height = 0, channels = 0; ///< channels as in the file
};

std::optional<Picture> decoded(std::span<const std::uint8_t> bytes) {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return {};
    Picture out;
    out.points.reset(
        stbi_load_from_memory(bytes.data(), static_cast<int>(bytes.size()), &out.width, &out.height, &out.channels, 4));
    if (!out.points) return {};
    return out;
}

std::vector<std::uint8_t> encoded(const Picture& picture) {
    std::vector<std::uint8_t> png;
    const auto append = [](void* context, void* data, int size) {
        auto& out = *static_cast<std::vector<std::uint8_t>*>(context);
        const auto* first = static_cast<const std::uint8_t*>(data);
        out.insert(out.end(), first, first + size);
    };
    stbi_write_png_to_func(append, &png, picture.width, picture.height, 4, picture.points.get(), 4 * picture.width);
    return png;
}

} // namespace

std::string_view picture_type(std::span<const std::uint8_t> bytes) {
    constexpr std::uint8_t png[] = {0x89, 'P', 'N', 'G'}, jpeg[] = {0xFF, 0xD8, 0xFF};
    const auto starts_with = [bytes](std::span<const std::uint8_t> mark) {
        return bytes.size() >= mark.size() && std::equal(mark.begin(), mark.end(), bytes.begin());
    };
    return starts_with(png) ? "image/png" : starts_with(jpeg) ? "image/jpeg" : "";
}

std::optional<std::vector<std::uint8_t>> as_png(std::span<const std::uint8_t> bytes) {
    const std::optional<Picture> picture = decoded(bytes);
    if (!picture) return {};
    return encoded(*picture);
}

std::optional<std::vector<std::uint8_t>> with_transparency(std::span<const std::uint8_t> colours,
                                                           std::span<const std::uint8_t> transparency) {
    const std::optional<Picture> picture = decoded(colours), clear = decoded(transparency);
    if (!picture || !clear) return {};
    for (int y = 0; y < picture->height; ++y) {
        for (int x = 0; x < picture->width; ++x) {
            const long long from_x = static_cast<long long>(x) * clear->width / picture->width;
            const long long from_y = static_cast<long long>(y) * clear->height / picture->height;
            const stbi_uc* from = clear->points.get() + 4 * (from_y * clear->width + from_x);
            stbi_uc* to = picture->points.get() + 4 * (static_cast<long long>(y) * picture->width + x);
            to[3] = static_cast<stbi_uc>(255 - (from[0] * 54 + from[1] * 183 + from[2] * 19) / 256);
        }
    }
    return encoded(*picture);
}

PictureAlpha alpha_of(std::span<const std::uint8_t> bytes) {
    const std::optional<Picture> picture = decoded(bytes);
    if (!picture || picture->channels % 2 != 0) return PictureAlpha::none;
    const std::size_t count = static_cast<std::size_t>(picture->width) * static_cast<std::size_t>(picture->height);
    std::size_t clear = 0, between = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const stbi_uc alpha = picture->points.get()[4 * i + 3];
        if (alpha < 8) ++clear;
        if (alpha >= 8 && alpha < 248) ++between;
    }
    if (clear + between == 0) return PictureAlpha::none;
    return between * 10 <= count ? PictureAlpha::cut_out : PictureAlpha::smooth;
}

} // namespace vor2::convert
