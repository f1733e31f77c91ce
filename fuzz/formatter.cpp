// Any format with any arguments, in both widths, and the text helpers around it.

#include "support/text/formatter.h"
#include "fuzz/input.h"
#include "support/text/text_helpers.h"
#include "support/text/unicode.h"

namespace {

using namespace VOR2_LOADER;

template<class CHARACTER>
void put_any(FORMATTER<CHARACTER>& formatter, fuzz::Input& input, const BASIC_TEXT<CHARACTER>& text) {
    switch (input.below(4)) {
    case 0:
        formatter.put(input.take<i32>());
        break;
    case 1:
        formatter.put(input.take<u32>());
        break;
    case 2:
        formatter.put(text);
        break;
    default:
        if constexpr (sizeof(CHARACTER) == 1) {
            formatter.put(input.take<f32>());
        } else {
            static const char c_string[] = "text";
            formatter.put(static_cast<u64>(reinterpret_cast<std::uintptr_t>(c_string)));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const u8* data, std::size_t size) {
    fuzz::Input input(data, size);
    const std::string words = input.text(200), argument = input.text(60);
    const NARROW_TEXT narrow_format(words), narrow_argument(argument);
    const TEXT wide_format = widen(words), wide_argument = widen(argument);
    FORMATTER<char> narrow_one(narrow_format);
    // A width of five digits asks for some 60,000 blanks: a dozen of those are enough.
    for (int i = 0; i < 12 && narrow_one.next(); ++i) put_any(narrow_one, input, narrow_argument);
    FORMATTER<char16_t> wide_one(wide_format);
    for (int i = 0; i < 12 && wide_one.next(); ++i) put_any(wide_one, input, wide_argument);
    if (narrow(wide_format.view()).view() != words) fuzz::wrong("widening and narrowing lost something");
    const std::u16string units = to_utf16(words);
    if (to_utf16(to_utf8(units)) != units) fuzz::wrong("UTF-16 lost something on its way through UTF-8");
    (void)find_last(words, argument);
    return 0;
}
