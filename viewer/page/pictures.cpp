#include "viewer/page/pictures.h"

#include "format/core/files.h"
#include "format/core/paths.h"
#include "inspect/scene_facts.h"

#include <algorithm>
#include <array>
#include <optional>

namespace vor2::viewer {
namespace {

using namespace VOR2_LOADER;

constexpr i64 largest_picture = 64 << 20;

/// What a browser shows, by how such a file begins.
std::string_view type_of(std::span<const u8> bytes) {
    const auto begins = [bytes](std::string_view mark, std::size_t at = 0) {
        return bytes.size() >= at + mark.size() &&
               std::equal(mark.begin(), mark.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at),
                          [](char c, u8 byte) { return static_cast<u8>(c) == byte; });
    };
    if (begins("\x89PNG\r\n\x1A\n")) return "image/png";
    if (begins("\xFF\xD8\xFF")) return "image/jpeg";
    if (begins("GIF8")) return "image/gif";
    if (begins("RIFF") && begins("WEBP", 8)) return "image/webp";
    if (begins("BM")) return "image/bmp";
    return {};
}

/// Whether a relative name leads nowhere but down.
bool stays_inside(std::u16string_view name) {
    if (name.empty() || is_absolute(name)) return false;
    for (std::size_t start = 0; start <= name.size();) {
        const std::size_t end = std::min(name.find_first_of(u"\\/", start), name.size());
        if (name.substr(start, end - start) == u"..") return false;
        start = end + 1;
    }
    return true;
}

std::u16string bare(std::u16string_view name) {
    return std::u16string(name.substr(name.find_last_of(u"\\/:") + 1));
}

bool looks_like_a_picture(std::u16string_view name) {
    std::u16string lower(name);
    for (char16_t& c : lower) c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    constexpr std::array endings{u".png", u".jpg", u".jpeg", u".gif",  u".webp", u".bmp",
                                 u".tga", u".dds", u".tif",  u".tiff", u".psd"};
    return std::ranges::any_of(endings, [&lower](const char16_t* ending) { return lower.ends_with(ending); });
}

std::optional<std::vector<u8>> read_whole(const TEXT& name) {
    READ_FILE file;
    if (!file.open(name)) return {};
    const i64 length = file.length();
    if (length < 0 || length > largest_picture) return {};
    std::vector<u8> bytes(static_cast<std::size_t>(length));
    if (file.read(bytes.data(), static_cast<u32>(length)) != bytes.size()) return {};
    return bytes;
}

/// The first bitmap of a material whose text is one of those, in any case.
const VOR2_BITMAP_MATERIAL_MAP* first_bitmap(const VOR2_MATERIAL& material,
                                             std::initializer_list<std::u16string_view> uses) {
    const auto* standard = dynamic_cast<const VOR2_STANDARD_MATERIAL*>(&material);
    if (standard == nullptr) return nullptr;
    for (const auto& map : standard->maps) {
        const auto* bitmap = dynamic_cast<const VOR2_BITMAP_MATERIAL_MAP*>(map.get());
        if (bitmap == nullptr) continue;
        std::u16string use(bitmap->map_text.view());
        for (char16_t& c : use) c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
        if (std::find(uses.begin(), uses.end(), use) != uses.end()) return bitmap;
    }
    return nullptr;
}

} // namespace

const VOR2_BITMAP_MATERIAL_MAP* Pictures::colour_map(const VOR2_MATERIAL& material) {
    return first_bitmap(material, {u"", u"colour", u"color", u"diffuse"});
}

bool Pictures::makes_clear(const VOR2_MATERIAL& material) {
    const VOR2_BITMAP_MATERIAL_MAP* colour = colour_map(material);
    const VOR2_BITMAP_MATERIAL_MAP* clear = first_bitmap(material, {u"transparency", u"opacity"});
    return colour != nullptr && clear != nullptr &&
           colour->bitmap_params.bitmap_name == clear->bitmap_params.bitmap_name;
}

int Pictures::of_material(const VOR2_MATERIAL& material) {
    if (const VOR2_BITMAP_MATERIAL_MAP* map = colour_map(material)) {
        return number_of(map->bitmap_params.bitmap_name);
    } else if (const auto* shader = dynamic_cast<const VOR2_SHADER_MATERIAL*>(&material)) {
        for (const auto& param : shader->string_params) {
            if (looks_like_a_picture(param.value)) return number_of(param.value);
        }
    }
    return -1;
}

int Pictures::number_of(const TEXT& name) {
    const auto [known, is_new] = numbers_.emplace(name.view(), static_cast<int>(pictures_.size()));
    if (is_new) pictures_.push_back(load(name));
    return known->second;
}

Pictures::Picture Pictures::load(const TEXT& name) {
    Picture picture{inspect::readable(name), {}, "isn't beside the scene", {}};
    std::vector<std::u16string> candidates;
    if (stays_inside(name)) candidates.emplace_back(name.view());
    if (const std::u16string alone = bare(name); stays_inside(alone)) candidates.push_back(alone);
    for (std::u16string& candidate : candidates) {
        std::ranges::replace(candidate, u'/', u'\\');
        const std::optional<std::vector<u8>> bytes = read_whole(resolve_path(scene_file_, candidate));
        if (!bytes) continue;
        picture.type = type_of(*bytes);
        picture.why_missing = picture.type.empty() ? "is no PNG, JPEG, GIF, WebP or BMP, which browsers show" : "";
        if (!picture.type.empty()) picture.bytes = block_.add_bytes(*bytes);
        break;
    }
    return picture;
}

void Pictures::write_all(inspect::JsonWriter& json) const {
    json.begin_array();
    for (const Picture& picture : pictures_) {
        json.begin_object();
        json.text("name", picture.name);
        if (picture.type.empty()) {
            json.text("missing", picture.why_missing);
        } else {
            json.text("type", picture.type);
            json.key("bytes");
            json.begin_array(true);
            json.number(picture.bytes.first);
            json.number(picture.bytes.count);
            json.end_array();
        }
        json.end_object();
    }
    json.end_array();
}

std::vector<std::string> Pictures::missing() const {
    std::vector<std::string> lines;
    for (const Picture& picture : pictures_) {
        if (picture.type.empty()) lines.push_back("the picture " + picture.name + " " + picture.why_missing);
    }
    return lines;
}

} // namespace vor2::viewer
