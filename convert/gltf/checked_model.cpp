#include "convert/gltf/checked_model.h"

#include "convert/gltf/accessors.h"

#include <nlohmann/json.hpp>

#include <cstring>
#include <limits>

namespace vor2::convert {
namespace {

using Json = nlohmann::json;

constexpr std::size_t deepest_nesting = 128;

/// The JSON of either kind of file.
std::string_view text_of_file(std::span<const std::uint8_t> bytes) {
    const char* text = reinterpret_cast<const char*>(bytes.data());
    if (bytes.size() < 4 || std::memcmp(text, "glTF", 4) != 0) return {text, bytes.size()};
    std::uint32_t length = 0;
    if (bytes.size() >= 20) std::memcpy(&length, text + 12, sizeof length);
    if (bytes.size() < 20 || length > bytes.size() - 20) throw BadFile("is cut off within its JSON");
    return {text + 20, length};
}

/// The library reads nested values by calling itself.
void expect_flat(std::string_view text) {
    std::size_t depth = 0;
    bool in_string = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (in_string && c == '\\') {
            ++i;
        } else if (c == '"') {
            in_string = !in_string;
        } else if (!in_string && (c == '{' || c == '[')) {
            if (++depth > deepest_nesting) throw BadFile("nests values more than 128 deep");
        } else if (!in_string && (c == '}' || c == ']') && depth > 0) {
            --depth;
        }
    }
}

std::uint64_t whole(const Json& object, const char* name) {
    if (!object.is_object() || !object.contains(name)) return 0;
    const Json& value = object[name];
    return value.is_number_unsigned() ? value.get<std::uint64_t>() : std::numeric_limits<std::uint64_t>::max();
}

const Json& member(const Json& list, std::uint64_t index, const char* what) {
    if (!list.is_array() || index >= list.size())
        throw BadFile(std::string(what) + " " + std::to_string(index) + " isn't there");
    return list[index];
}

/// The library neither checks where a picture lies nor how often a file has its one buffer copied.
void check_before_library(const Json& json) {
    if (!json.is_object()) throw BadFile("isn't glTF: its JSON is no object");
    const Json none = Json::array();
    const Json& buffers = json.contains("buffers") ? json["buffers"] : none;
    const Json& views = json.contains("bufferViews") ? json["bufferViews"] : none;
    std::size_t own = 0;
    for (const Json& buffer : buffers) {
        if (!buffer.is_object() || !buffer.contains("uri")) ++own;
    }
    if (own > 1) throw BadFile("has several buffers that are its own");
    if (!json.contains("images")) return;
    for (const Json& image : json["images"]) {
        if (!image.is_object() || !image.contains("bufferView")) continue;
        const Json& view = member(views, whole(image, "bufferView"), "buffer view");
        const Json& buffer = member(buffers, whole(view, "buffer"), "buffer");
        const std::uint64_t size = whole(buffer, "byteLength"), offset = whole(view, "byteOffset");
        if (offset >= size || whole(view, "byteLength") > size - offset ||
            whole(view, "byteLength") > static_cast<std::uint64_t>(std::numeric_limits<int>::max()))
            throw BadFile("a picture reaches behind its buffer's end");
    }
}

bool keep_encoded(tinygltf::Image* image, int, std::string*, std::string*, int, int, const unsigned char* bytes,
                  int size, void*) {
    image->image.assign(bytes, bytes + size);
    image->as_is = true;
    return true;
}

/// What the library's calls for files come to.
struct Files {
    const GltfSource& source;
    double left = 2147483647.0; ///< bytes in all

    static bool exists(const std::string&, void*) { return true; }
    static std::string expand(const std::string& name, void*) { return name; }
    static bool read(std::vector<unsigned char>* out, std::string* error, const std::string& name, void* user) {
        auto& files = *static_cast<Files*>(user);
        std::optional<std::vector<std::uint8_t>> bytes = files.source.read ? files.source.read(name) : std::nullopt;
        if (bytes) files.left -= static_cast<double>(bytes->size());
        if (bytes && files.left < 0) *error += "its files come to more than 2 GiB";
        if (!bytes) *error += "there is no file " + name;
        if (!bytes || files.left < 0) return false;
        *out = std::move(*bytes);
        return true;
    }
    static bool write(std::string*, const std::string&, const std::vector<unsigned char>&, void*) { return false; }
};

/// One line of what the library says.
std::string first_line(std::string text) {
    text.erase(0, text.find_first_not_of(" \r\n"));
    text.erase(std::min(text.find('\n'), text.size()));
    while (!text.empty() && (text.back() == '.' || text.back() == ' ')) text.pop_back();
    return text.empty() ? "can't be read as glTF" : "can't be read as glTF: " + text;
}

} // namespace

tinygltf::Model checked_model(const GltfSource& source) {
    if (source.bytes.size() > std::numeric_limits<std::uint32_t>::max()) throw BadFile("is longer than 4 GiB");
    if (source.bytes.empty()) throw BadFile("is empty");
    const std::string_view text = text_of_file(source.bytes);
    expect_flat(text);
    const Json json = Json::parse(text, nullptr, false);
    if (json.is_discarded()) throw BadFile("isn't glTF: its JSON can't be read");
    check_before_library(json);
    tinygltf::TinyGLTF library;
    Files files{source};
    library.SetImageLoader(keep_encoded, nullptr);
    library.SetFsCallbacks({Files::exists, Files::expand, Files::read, Files::write, &files});
    tinygltf::Model model;
    std::string error, warning;
    const auto size = static_cast<unsigned int>(source.bytes.size());
    const bool binary = text.data() != reinterpret_cast<const char*>(source.bytes.data());
    bool good = false;
    try {
        good = binary ? library.LoadBinaryFromMemory(&model, &error, &warning, source.bytes.data(), size)
                      : library.LoadASCIIFromString(&model, &error, &warning, text.data(), size, "");
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& failure) {
        throw BadFile(std::string("can't be read as glTF: ") + failure.what());
    }
    if (!good) throw BadFile(first_line(error));
    if (!model.asset.version.starts_with("2."))
        throw BadFile("is glTF " + model.asset.version + ", and only 2 can be read");
    for (const std::string& extension : model.extensionsRequired) {
        if (extension != "KHR_lights_punctual" && extension != "KHR_mesh_quantization" &&
            extension != "KHR_texture_transform" && !extension.starts_with("KHR_materials_"))
            throw BadFile("needs the extension " + extension + ", which can't be read");
    }
    return model;
}

} // namespace vor2::convert
