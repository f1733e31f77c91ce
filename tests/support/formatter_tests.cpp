#include "support/text/formatter.h"
#include "support/text/text_helpers.h"

#include <gtest/gtest.h>

#include <limits>

namespace VOR2_LOADER {
namespace {

template<class ARGUMENT>
std::string narrow_result(const char* format, const ARGUMENT& argument) {
    return std::string(formatted(NARROW_TEXT(format), argument).view());
}
template<class ARGUMENT>
std::u16string wide_result(const char16_t* format, const ARGUMENT& argument) {
    return std::u16string(formatted(TEXT(format), argument).view());
}

TEST(formatter, integers_in_every_letter) {
    EXPECT_EQ(narrow_result("<%d>", i32{-5}), "<-5>");
    EXPECT_EQ(narrow_result("<%05d>", i32{-5}), "<000-5>") << "the sign is part of the text";
    EXPECT_EQ(narrow_result("<%-05d>", i32{5}), "<50000>");
    EXPECT_EQ(narrow_result("<%+4d>", i32{5}), "<  +5>");
    EXPECT_EQ(narrow_result("<% d>", i32{0}), "< 0>");
    EXPECT_EQ(narrow_result("<%u>", i32{-1}), "<4294967295>");
    EXPECT_EQ(narrow_result("<%d>", std::numeric_limits<i32>::min()), "<-2147483648>");
    EXPECT_EQ(narrow_result("<%x>", u32{0xBEEF}), "<beef>");
    EXPECT_EQ(narrow_result("<%08X>", u32{0xBEEF}), "<0000BEEF>");
    EXPECT_EQ(narrow_result("<%c>", u32{65}), "<A>");
    EXPECT_EQ(narrow_result("<%3C>", u32{0x1241}), "<  A>");
    EXPECT_EQ(narrow_result("<%p>", i32{-1}), "<00000000ffffffff>");
    EXPECT_EQ(wide_result(u"<%p>", i32{-1}), u"<ffffffffffffffff>");
    EXPECT_EQ(wide_result(u"<%P>", u64{0xABCD00000001}), u"<0000ABCD00000001>");
    EXPECT_EQ(wide_result(u"<%x>", u64{0xABCD00000001}), u"<1>");
}

TEST(formatter, texts_fill_with_blanks) {
    EXPECT_EQ(narrow_result("%05s|", NARROW_TEXT("ab")), "   ab|");
    EXPECT_EQ(narrow_result("%-5S|", NARROW_TEXT("ab")), "ab   |");
    EXPECT_EQ(narrow_result("%1s|", NARROW_TEXT("ab")), "ab|") << "a width never cuts";
    const char* c_string = "host";
    EXPECT_EQ(wide_result(u"%6s|", static_cast<u64>(reinterpret_cast<std::uintptr_t>(c_string))), u"  host|");
}

TEST(formatter, floats_round_half_up_on_the_widened_value) {
    EXPECT_EQ(narrow_result("%.2f", 1.5F), "1.50");
    EXPECT_EQ(narrow_result("%f", 0.1F), "0.100000");
    EXPECT_EQ(narrow_result("%.0f", 2.0F), "2.000000") << "a precision of 0 means 6";
    EXPECT_EQ(narrow_result("%.1f", -0.25F), "-0.3");
    EXPECT_EQ(narrow_result("%+8.2f", 3.14159F), "   +3.14");
    EXPECT_EQ(narrow_result("%.3f", 1.0005F), "1.000") << "the float lies just below the half";
    const f32 infinity = std::numeric_limits<f32>::infinity();
    EXPECT_EQ(narrow_result("%.2f", infinity), "inf");
    EXPECT_EQ(narrow_result("%.2f", -infinity), "-inf");
    EXPECT_EQ(narrow_result("%.1f", 1e30F), "1000000015047466219876688855040.0");
}

TEST(formatter, the_order_of_a_directive_is_fixed) {
    EXPECT_EQ(narrow_result("100%% of %d", i32{3}), "100% of 3");
    EXPECT_EQ(narrow_result("%0-5d!", i32{3}), "5d!") << "a minus behind the zero is the letter, and fits nothing";
    EXPECT_EQ(narrow_result("%q|", i32{3}), "|") << "an unknown letter uses its argument up";
    EXPECT_EQ(narrow_result("%f|", i32{3}), "|");
    EXPECT_EQ(std::string(formatted(NARROW_TEXT("%d-%d-%d"), i32{1}, i32{2}).view()), "1-2-");
    const NARROW_TEXT plain("plain"), open("open%");
    FORMATTER<char> copied(plain);
    EXPECT_FALSE(copied.next());
    EXPECT_EQ(copied.output().view(), "plain");
    FORMATTER<char> cut(open);
    EXPECT_FALSE(cut.next());
    EXPECT_FALSE(cut.next());
    EXPECT_EQ(cut.output().view(), "open");
}

} // namespace
} // namespace VOR2_LOADER
