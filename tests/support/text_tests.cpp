#include "support/text/text_helpers.h"
#include "support/text/unicode.h"

#include <gtest/gtest.h>

namespace VOR2_LOADER {
namespace {

TEST(text, always_ends_in_a_nul_that_its_size_counts) {
    TEXT text;
    EXPECT_EQ(text.size(), 1U);
    EXPECT_EQ(text.capacity(), 8U);
    for (const char16_t unit : std::u16string_view(u"walking biped")) text.append(unit);
    EXPECT_EQ(text.size(), 14U);
    EXPECT_EQ(text.capacity(), 16U);
    EXPECT_EQ(text[13], u'\0');
    text.append(text.view());
    EXPECT_EQ(text.view(), u"walking bipedwalking biped") << "a text can be appended to itself";
    const TEXT moved(std::move(text));
    EXPECT_EQ(*text.c_str(), u'\0'); // NOLINT(bugprone-use-after-move): what is left must be readable
    EXPECT_EQ(moved.length(), 26U);
}

TEST(text_helpers, widths_and_searches) {
    std::string all;
    for (int i = 1; i < 256; ++i) all.push_back(static_cast<char>(i));
    EXPECT_EQ(narrow(widen(all).view()).view(), all);
    EXPECT_EQ(narrow(std::u16string_view(u"\u0141")).view(), "A") << "the high byte goes";
    EXPECT_EQ(widen("hips_L", 2, 3).view(), u"ps_");
    EXPECT_EQ(narrow(u"hips_L", 4, 2).view(), "_L");
    EXPECT_EQ(find_last(u"a:b:c", u":"), 3);
    EXPECT_EQ(find_last("abcabc", "bc"), 4);
    EXPECT_EQ(find_last(u"abc", u"x"), -1);
    EXPECT_EQ(find_last(u"", u":"), -1);
    EXPECT_EQ(find_last(u"abc", u""), -1);
    EXPECT_EQ(sub_text(TEXT(u"abcdef"), 2, 3).view(), u"cde");
    EXPECT_EQ(to_base(255, 16).view(), "ff");
    EXPECT_EQ(to_decimal(0).view(), "0");
    NARROW_TEXT mixed("aZ\xC4");
    EXPECT_EQ(to_upper(mixed).view(), "AZ\xC4") << "ASCII letters alone";
    EXPECT_EQ(to_lower(mixed).view(), "az\xC4");
    TEXT wide(u"aZ\u00c4\u0161");
    EXPECT_EQ(to_upper(wide).view(), u"AZ\u00c4\u0161");
    EXPECT_EQ(to_lower(wide).view(), u"az\u00c4\u0161");
    EXPECT_EQ(join(TEXT(u"a"), TEXT(u"b")).view(), u"ab");
    EXPECT_FALSE(equals(TEXT(u"a"), TEXT(u"A")));
}

TEST(unicode, names_come_back_readable) {
    EXPECT_EQ(to_utf16("\xC3\xA9\xF0\x9F\x98\x80\xFF"), u"\u00e9\U0001F600\u00ff");
    EXPECT_EQ(to_utf8(u"\u00e9\U0001F600"), "\xC3\xA9\xF0\x9F\x98\x80");
    EXPECT_EQ(to_readable_utf8(u"\u00c3\u00a9"), "\xC3\xA9") << "bytes that a host widened one by one";
}

} // namespace
} // namespace VOR2_LOADER
