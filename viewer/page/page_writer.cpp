#include "viewer/page/page_writer.h"

#include "viewer/page/template.h"

namespace vor2::viewer {
namespace {

using Put = std::function<bool(std::string_view)>;

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

/// Three bytes, the first in the lowest bits, as four letters.
void append_letters(std::string& text, u32 bytes) {
    static constexpr char letters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const u32 ordered = (bytes & 0xFFU) << 16U | (bytes & 0xFF00U) | (bytes >> 16U & 0xFFU);
    for (const u32 shift : {18U, 12U, 6U, 0U}) text += letters[ordered >> shift & 63U];
}

/// Words as base64, least significant byte first. Three words make sixteen letters; zeros fill the last three up.
bool put_base64(const std::vector<u32>& words, const Put& put) {
    constexpr std::size_t words_at_once = 3 * 4096;
    std::string text;
    for (std::size_t start = 0; start < words.size(); start += words_at_once) {
        const std::size_t end = std::min(start + words_at_once, words.size());
        text.clear();
        for (std::size_t i = start; i < end; i += 3) {
            const u32 a = words[i], b = i + 1 < end ? words[i + 1] : 0, c = i + 2 < end ? words[i + 2] : 0;
            append_letters(text, a & 0xFFFFFFU);
            append_letters(text, a >> 24U | (b & 0xFFFFU) << 8U);
            append_letters(text, b >> 16U | (c & 0xFFU) << 16U);
            append_letters(text, c >> 8U);
        }
        if (!put(text)) return false;
    }
    return true;
}

bool put_scene(const ScenePack& pack, std::string_view suffix, const Put& put) {
    const std::string id(suffix);
    return put("<script type=\"application/json\" id=\"scene" + id + "\">") && put(pack.json) && put("</script>\n") &&
           put("<script type=\"application/octet-stream\" id=\"words" + id + "\">") && put_base64(pack.words, put) &&
           put("</script>\n");
}

} // namespace

bool write_page(const PageScenes& scenes, const Put& put) {
    return put(page_head) && put("<title>" + escaped(scenes.title) + "</title>\n") && put(page_body) &&
           put_scene(scenes.first, "", put) &&
           (scenes.compared == nullptr || put_scene(*scenes.compared, "-compared", put)) && put(page_tail);
}

} // namespace vor2::viewer
