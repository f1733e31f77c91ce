#include "viewer/page/page_writer.h"

#include "viewer/page/markup.h"
#include "viewer/page/template.h"

namespace vor2::viewer {
namespace {

/// Three bytes, the first in the lowest bits, as four letters.
void append_letters(std::string& text, u32 bytes) {
    static constexpr char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const u32 ordered = (bytes & 0xFFU) << 16U | (bytes & 0xFF00U) | (bytes >> 16U & 0xFFU);
    for (const u32 shift : {18U, 12U, 6U, 0U}) text += letters[ordered >> shift & 63U];
}

/// Words as base64, least significant byte first. Three words make sixteen letters; zeros fill the last three up.
void append_base64(std::string& text, const std::vector<u32>& words) {
    for (std::size_t i = 0; i < words.size(); i += 3) {
        const u32 a = words[i], b = i + 1 < words.size() ? words[i + 1] : 0,
                  c = i + 2 < words.size() ? words[i + 2] : 0;
        append_letters(text, a & 0xFFFFFFU);
        append_letters(text, a >> 24U | (b & 0xFFFFU) << 8U);
        append_letters(text, b >> 16U | (c & 0xFFU) << 16U);
        append_letters(text, c >> 8U);
    }
}

void append_scene(std::string& page, const ScenePack& pack, std::string_view suffix) {
    const std::string id(suffix);
    page += "<script type=\"application/json\" id=\"scene" + id + "\">";
    page += pack.json;
    page += "</script>\n<script type=\"application/octet-stream\" id=\"words" + id + "\">";
    append_base64(page, pack.words);
    page += "</script>\n";
}

std::size_t size_of(const ScenePack& pack) {
    return pack.json.size() + pack.words.size() / 3 * 16 + 1024;
}

} // namespace

std::string page_of(const PageScenes& scenes) {
    std::string page;
    page.reserve(page_head.size() + page_body.size() + page_tail.size() + size_of(scenes.first) +
                 (scenes.compared != nullptr ? size_of(*scenes.compared) : 0));
    page += page_head;
    page += "<title>" + as_text(scenes.title) + "</title>\n";
    page += page_body;
    append_scene(page, scenes.first, "");
    if (scenes.compared != nullptr) append_scene(page, *scenes.compared, "-compared");
    page += page_tail;
    return page;
}

} // namespace vor2::viewer
