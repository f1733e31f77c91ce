#include "script_test.h"

#include "headless/script/script_work.h"

#include <utility>

namespace headless {
namespace {

TEST_F(ScriptTest, values_and_control_flow) {
    EXPECT_EQ(mel("int $a = 7; $a / 2"), "3");
    EXPECT_EQ(mel("float $a = 7; $a / 2"), "3.5");
    EXPECT_EQ(mel("$a = 2 + 3 * 4 - -1; $a"), "15");
    EXPECT_EQ(mel("string $s = \"a\" + 1 + 0.5; $s + \"\\t\\\"\""), "a10.5\t\"");
    EXPECT_EQ(mel("int $n = 0; for ($i = 0; $i < 10; $i++) { if ($i == 2) continue; if ($i > 5) break; $n += $i; } $n"),
              "13"); // 0 + 1 + 3 + 4 + 5
    EXPECT_EQ(mel("string $t = \"\"; for ($x in {\"a\", \"b\"}) $t += $x; $t"), "ab");
    EXPECT_EQ(mel("int $i = 3; while ($i) $i--; $i == 0 && !($i != 0) ? \"done\" : \"no\""), "done");
    EXPECT_EQ(mel("string $l[]; $l[1] = \"x\"; size($l) + \":\" + $l[1]"), "2:x");
    EXPECT_EQ(mel("if (0) print \"a\"; else if (1) { $b = 5; } $b"), "5");
}

TEST_F(ScriptTest, values_turn_into_the_type_that_is_declared) {
    for (const auto& [text, number] : {std::pair{"12 apples", "12"},
                                       {" -2.5e1x", "-25"},
                                       {"+5", "5"},
                                       {".5", "0.5"},
                                       {"nancy", "0"},
                                       {"infant", "0"},
                                       {"-nan", "0"},
                                       {"", "0"},
                                       {"- 1", "0"}})
        EXPECT_EQ(mel("float $f = \"" + std::string(text) + "\"; $f"), number) << text;
    EXPECT_EQ(mel("int $i = -3.99; int $j = \"3.99\"; $i + \" \" + $j"), "-3 3");
    EXPECT_EQ(mel("int $l[] = {1.5, \"2x\", -3}; float $f[] = $l; $l[0] + $f[2]"), "-2");
    EXPECT_EQ(mel("float $f[3] = 4; $s = size($f) + size(7) + size(\"abc\"); $s"), "5");
    EXPECT_EQ(mel("string $s[] = {1, 2.5}; $s[0] + $s[1]"), "12.5");
    EXPECT_EQ(mel("string $l[] = {\"a\"}; int $n[]; ($l[5] == \"\") + $n[9]"), "1");
    EXPECT_EQ(mel("float $m[] = {1, 2.5, yes}; $m"), "1 2.5 1");
    EXPECT_EQ(mel("$t = (\"b\" > \"a\") + (\"10\" < \"9\") + (2 <= 2) + (3 >= 4) + (2.5 > 2) + off; $t"), "4");
    EXPECT_EQ(mel("$s = \"a\\tb\\r\\n\\\"\\\\\\q\\\n\"; $s"), "a\tb\r\n\"\\q");
    EXPECT_EQ(mel("$a = 1 /* one\n */ + 2; $a // three"), "3");
}

TEST_F(ScriptTest, loops_and_steps) {
    EXPECT_EQ(mel("int $n = 0; for (;;) { if (++$n > 4) break; } $n"), "5");
    EXPECT_EQ(mel("for (int $i = 0, $j = 10; $i < $j; $i++, $j -= 1) ; $i + \":\" + $j"), "5:5");
    EXPECT_EQ(mel("int $i = 3; int $a = $i++, $b = ++$i, $c = $i--, $d = --$i; $s = \"\" + $a + $b + $c + $d; $s"),
              "3553");
    EXPECT_EQ(mel("int $l[] = {1, 2}; $l[1]++; --$l[0]; $l"), "0 3");
    EXPECT_EQ(mel("++3"), "error: line 1:4: Syntax error: nothing can be counted here at the end");
    EXPECT_EQ(mel("for ($i = 0; $i < 1"), "error: line 1:20: Syntax error: ';' is missing at the end");
}

TEST_F(ScriptTest, globals_outlive_the_script_and_are_asked_for_by_name) {
    mel("global int $g_count = 3, $g_step = 2; global string $g_tag;");
    EXPECT_EQ(mel("global int $g_count; global int $g_step; $g_count += $g_step; $g_count"), "5");
    EXPECT_EQ(mel("global proc int next() { global int $g_count; return ++$g_count; } next() + next() * 10"), "76");
    EXPECT_EQ(mel("$g_count"), "error: \"$g_count\" is an undeclared variable");
    EXPECT_EQ(mel("proc int same() { $g_count = 1; return $g_count; } global int $g_count; same() * 100 + $g_count"),
              "107");
    EXPECT_EQ(mel("global string $g_count; size($g_count)"), "0");
    EXPECT_EQ(mel("next(1)"), "error: Wrong number of arguments on call to next");
    EXPECT_EQ(mel("global number $x;"), "error: line 1:14: Syntax error: a type is missing at ' '");
    EXPECT_EQ(mel("$a = foo;"), "error: line 1:6: Syntax error: a value is missing at 'f'");
}

TEST_F(ScriptTest, commands_feed_commands) {
    EXPECT_EQ(mel("string $j = `createNode joint -n \"hip\"`; setAttr ($j + \".tx\") 4; getAttr hip.tx"), "4");
    EXPECT_EQ(mel("for ($n in `ls -type joint`) print ($n + \"\\n\"); size(`ls \"nothing*\"`)"), "0");
    EXPECT_EQ(messages, (std::vector<std::string>{"I: hip"}));
    EXPECT_EQ(mel("global proc string twice(string $s) { return $s + $s; } twice(\"ab\")"), "abab");
    EXPECT_EQ(mel("twice \"c\""), "cc");
    EXPECT_EQ(mel("eval \"print 5; objExists hip\""), "1");
}

TEST_F(ScriptTest, errors_tell_what_and_where) {
    EXPECT_EQ(mel("blowUp -x;"), "error: Cannot find procedure \"blowUp\"");
    EXPECT_EQ(mel("print 1;\n  blowUp 2;"), "error: line 2:3: Cannot find procedure \"blowUp\"");
    EXPECT_EQ(mel("$a = (1 + ;"), "error: line 1:11: Syntax error: a value is missing at ';'");
    EXPECT_EQ(mel("print \"abc"), "error: line 1:7: Syntax error: a string has no end");
    EXPECT_EQ(mel("select -cl; /* on"), "error: line 1:13: Syntax error: a comment has no end");
    EXPECT_EQ(mel("if (1) { print 1;"), "error: line 1:18: Syntax error: '}' is missing at the end");
    EXPECT_EQ(mel("$x"), "error: \"$x\" is an undeclared variable");
    EXPECT_EQ(mel("1 / 0"), "error: line 1:1: Syntax error: a statement can't begin at '1'");
    EXPECT_EQ(mel("$a = 1 / 0"), "error: Division by zero");
    EXPECT_EQ(mel("select -foo"), "error: Invalid flag '-foo'");
}

TEST_F(ScriptTest, nothing_runs_without_end) {
    EXPECT_EQ(mel("while (1) ;"), "error: The loop doesn't end");
    EXPECT_EQ(mel("global proc f() { f(); } f()"), "error: The script nests too deep");
    EXPECT_NE(mel("$a = " + std::string(100000, '(')).find("nests too deep"), std::string::npos);
    EXPECT_NE(mel(std::string(100000, '{')).find("nests too deep"), std::string::npos);
    std::string sum = "$a = 1";
    for (int i = 0; i < 100000; ++i) sum += "+1";
    EXPECT_NE(mel(sum).find("too long"), std::string::npos);
    EXPECT_NE(python(std::string(100000, '[')).find("nests too deep"), std::string::npos);
    const std::string too_much = "The script takes too much time or memory";
    const std::size_t most_units = std::exchange(ScriptWork::most_units, 1'000'000);
    for (const char* hungry : {
             "proc int f(int $n) { if ($n < 1) return 0; f($n - 1); f($n - 1); return 1; } f(40);",
             "$s = \"ab\"; for ($i = 0; $i < 60; $i++) $s += $s;",
             "string $s[] = {\"ab\"}; for ($i = 0; $i < 60; $i++) $s = {$s, $s};",
             "string $a[], $b[], $c[]; $a[16777215] = 1; $b[16777215] = 1; $c[16777215] = 1;",
             "python(\"s = ['ab']\"); for ($i = 0; $i < 60; $i++) python(\"s = s + s\");",
         })
        EXPECT_TRUE(mel(hungry).ends_with(too_much)) << hungry;
    ScriptWork::most_units = most_units;
    EXPECT_NE(python("import maya.cmds as cmds; s = 'cmds.python(s)'; cmds.python(s)").find("recursion"),
              std::string::npos);
}

} // namespace
} // namespace headless
