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

    [[nodiscard]] std::span<stbi_uc> all() const {
        return {points.get(), 4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height)};
    }
    /// The four bytes at a point of a picture of another size that lies over this one.
    [[nodiscard]] const stbi_uc* at(int x, int y, const Picture& over) const {
        const long long my_x = static_cast<long long>(x) * width / over.width;
        const long long my_y = static_cast<long long>(y) * height / over.height;
        return points.get() + 4 * (my_y * width + my_x);
    }
};

int brightness_of(const stbi_uc* point) {
    return (point[0] * 54 + point[1] * 183 + point[2] * 19) / 256;
}

/// An opaque white picture of the other's size.
std::optional<Picture> white(const Picture& other) {
    Picture out;
    out.width = other.width;
    out.height = other.height;
    out.channels = 4;
    out.points.reset(static_cast<stbi_uc*>(std::malloc(other.all().size())));
    if (!out.points) return {};
    std::ranges::fill(out.all(), stbi_uc{255});
    return out;
}

/// Fills each point of a picture.
template<class FILL>
void for_each_point(const Picture& picture, FILL fill) {
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x)
            fill(x, y, picture.points.get() + 4 * (static_cast<long long>(y) * picture.width + x));
    }
}

std::optional<Picture> decoded(std::span<const std::uint8_t> bytes) {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return {};
    Picture out;
    out.points.reset(
        stbi_load_from_memory(bytes.data(), static_cast<int>(bytes.size()), &out.width, &out.height, &out.channels, 4));
    if (!out.points) return {};
    return out;
}

PictureAlpha alpha_of(const Picture& picture) {
    if (picture.channels % 2 != 0) return PictureAlpha::none;
    std::size_t clear = 0, between = 0;
    for_each_point(picture, [&](int, int, const stbi_uc* point) {
        if (point[3] < 8) ++clear;
        if (point[3] >= 8 && point[3] < 248) ++between;
    });
    if (clear + between == 0) return PictureAlpha::none;
    const auto count = static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    return between * 10 <= count ? PictureAlpha::cut_out : PictureAlpha::smooth;
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

std::optional<std::vector<std::uint8_t>> with_opacity(std::span<const std::uint8_t> colours,
                                                      std::span<const std::uint8_t> opacity, bool tells_transparency) {
    const std::optional<Picture> tells = decoded(opacity);
    if (!tells) return {};
    const std::optional<Picture> picture = colours.empty() ? white(*tells) : decoded(colours);
    if (!picture) return {};
    const bool by_alpha = !tells_transparency && alpha_of(*tells) != PictureAlpha::none;
    for_each_point(*picture, [&](int x, int y, stbi_uc* to) {
        const stbi_uc* from = tells->at(x, y, *picture);
        const int told = by_alpha ? from[3] : brightness_of(from);
        to[3] = static_cast<stbi_uc>(tells_transparency ? 255 - told : told);
    });
    return encoded(*picture);
}

std::optional<std::vector<std::uint8_t>> metallic_roughness(std::span<const std::uint8_t> metallic,
                                                            std::span<const std::uint8_t> roughness) {
    const std::optional<Picture> metal = decoded(metallic), rough = decoded(roughness);
    if ((!metal && !metallic.empty()) || (!rough && !roughness.empty()) || (!metal && !rough)) return {};
    const std::optional<Picture> picture = white(!rough || (metal && metal->width > rough->width) ? *metal : *rough);
    if (!picture) return {};
    for_each_point(*picture, [&](int x, int y, stbi_uc* to) {
        if (rough) to[1] = static_cast<stbi_uc>(brightness_of(rough->at(x, y, *picture)));
        if (metal) to[2] = static_cast<stbi_uc>(brightness_of(metal->at(x, y, *picture)));
    });
    return encoded(*picture);
}

PictureAlpha alpha_of(std::span<const std::uint8_t> bytes) {
    const std::optional<Picture> picture = decoded(bytes);
    return picture ? alpha_of(*picture) : PictureAlpha::none;
}

} // namespace vor2::convert
