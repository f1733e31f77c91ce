// Text helpers and the names of files, against the standard library's and against each other.

#include "format/core/paths.h"
#include "fuzz/input.h"
#include "support/platform/platform.h"
#include "support/text/text_helpers.h"
#include "support/text/unicode.h"

#include <charconv>
#include <cmath>

namespace {

using namespace VOR2_LOADER;

std::u16string take_units(fuzz::Input& input) {
    std::u16string units;
    for (u32 n = input.below(40); n > 0; --n) {
        // Mostly what names are made of, now and then any unit at all.
        const u8 one = input.take<u8>();
        constexpr std::u16string_view TELLING = u"\\/.:ab\u00C3\u00A9\u4E2D\xD83D\xDE00";
        units += one < 200 ? TELLING[one % TELLING.size()] : static_cast<char16_t>(input.take<u16>());
    }
    return units;
}

void check_unicode(std::u16string_view units, const std::string& bytes) {
    std::string rebuilt;
    bool whole = true;
    for (std::size_t at = 0; at < units.size();) {
        const char32_t code_point = next_code_point(units, at);
        whole = whole && (code_point < 0xD800 || code_point > 0xDFFF);
        append_utf8(rebuilt, code_point);
    }
    if (rebuilt != to_utf8(units)) fuzz::wrong("code points one by one give another text");
    if (whole && to_utf16(rebuilt) != units) fuzz::wrong("UTF-16 lost something on its way through UTF-8");
    if (whole && to_readable_utf8(widen(rebuilt).view()) != rebuilt)
        fuzz::wrong("letters that came as bytes are others");
    (void)to_readable_utf8(to_utf16(bytes));
    (void)to_readable_utf8(units);
    (void)platform::native_file_name(units);
}

void check_paths(std::u16string_view base, std::u16string_view name) {
    bool is_file = false, has_folder = false;
    const TEXT file = file_name_of(base, is_file), folder = directory_of(base, has_folder);
    if (is_file != has_folder || join(folder, file).view() != base) fuzz::wrong("a path isn't its parts");
    if (file.view().find_first_of(u"\\/") != std::u16string_view::npos) fuzz::wrong("a separator in a file's name");
    const TEXT resolved = resolve_path(base, name);
    if (!resolved.view().ends_with(name)) fuzz::wrong("a resolved path that ends otherwise");
    if (is_absolute(name) && resolved.view() != name) fuzz::wrong("an absolute path was changed");
}

void check_numbers(fuzz::Input& input) {
    const u32 value = input.take<u32>(), base = 2 + input.below(15);
    const NARROW_TEXT digits = to_base(value, base);
    u32 back = 0;
    std::from_chars(digits.data(), digits.data() + digits.length(), back, static_cast<int>(base));
    if (back != value) fuzz::wrong("digits of another number");
    const f32 number = input.take<f32>();
    const u16 precision = static_cast<u16>(input.below(40));
    const NARROW_TEXT text = float_to_text(number, precision);
    if (!std::isfinite(number)) return;
    const double read = std::strtod(text.c_str(), nullptr);
    // Half of the last digit, and what a double loses of so many.
    const double error = 0.5000001 * std::pow(10.0, -precision) + 1e-12 * std::fabs(static_cast<double>(number));
    if (!(std::fabs(read - static_cast<double>(number)) <= error)) fuzz::wrong("a number that reads as another");
    const std::string_view shown = text.view();
    const std::size_t point = shown.find('.');
    const std::size_t decimals = point == shown.npos ? 0 : shown.size() - point - 1;
    if (decimals != precision) fuzz::wrong("another precision");
}

/// A text beside the standard library's, through the same changes.
void check_changes(fuzz::Input& input) {
    NARROW_TEXT text;
    std::string plain;
    for (int i = 0; i < 8 && !input.empty(); ++i) {
        const std::string more = input.text(30);
        switch (input.below(5)) {
        case 0:
            text.assign(more);
            plain = more;
            break;
        case 1:
            text.append(text.view().substr(plain.size() / 2));
            plain += plain.substr(plain.size() / 2);
            break;
        case 2:
            text = sub_text(text, static_cast<u16>(plain.size() / 3), static_cast<u16>(plain.size() / 2));
            plain = plain.substr(plain.size() / 3, plain.size() / 2);
            break;
        case 3:
            to_upper(text);
            for (char& c : plain) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
            break;
        default:
            text.append(more);
            plain += more;
        }
        if (text.view() != plain || text.c_str()[plain.size()] != '\0') fuzz::wrong("another text");
        if (narrow(widen(text.view()).view()).view() != plain) fuzz::wrong("widening lost something");
        const std::size_t place = more.empty() || plain.empty() ? plain.npos : plain.rfind(more);
        if (find_last(text, more) != (place == plain.npos ? -1 : static_cast<i32>(place))) {
            fuzz::wrong("found in another place");
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::u16string one = take_units(input), other = take_units(input);
    check_unicode(one, input.text(60));
    check_paths(one, other);
    check_numbers(input);
    check_changes(input);
    return 0;
}
