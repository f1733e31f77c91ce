#include "tool_test.h"

namespace tool_test {
namespace {

TEST_F(ToolTest, wrong_usage_exits_with_2_and_says_what_is_wrong) {
    const struct {
        std::vector<std::string> arguments;
        std::string words;
    } lines[] = {{{}, "no verb"},
                 {{"fold"}, "no verb 'fold'"},
                 {{"info"}, "FILE is required"},
                 {{"info", "--nonsense", "a.vr2"}, "--nonsense"},
                 {{"info", "a.vr2", "--jobs", "0"}, "'0' is no number from 1"},
                 {{"upgrade", "a.vr2"}, "OUT is required"},
                 {{"dump", "a.vr2", "b.vr2"}, "b.vr2"},
                 {{"dump", "a.vr2", "[b]"}, "[b]"},
                 {{"pose", "a.vr2", "--time", "1s"}, "'1s' is no number"},
                 {{"convert", "a.vr2", "b.txt"}, "doesn't end in"},
                 {{"convert", "a.txt", "b.glb"}, "nothing that can be converted"},
                 {{"convert", "a.vr2", "b.vr2", "c.glb"}, "--merge"},
                 {{"diff", "a.vr2", "b.vr2", "--tolerance", "-1"}, "--tolerance"}};
    for (const auto& line : lines) {
        const Outcome outcome = run(line.arguments);
        EXPECT_EQ(outcome.exit_code, 2);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.problems().size(), 1U) << outcome.err;
        EXPECT_NE(outcome.err.find(line.words), std::string::npos) << outcome.err;
    }
    expect_refused({"info", "/no/such.vr2"}, "/no/such.vr2", ""); // a path with a slash is no option anywhere
    for (const std::string name : {"[a,b]", "[]"}) expect_refused({"info", name}, name, ""); // nor is a list one
}

TEST_F(ToolTest, help_and_documents_tell_every_verb_and_option) {
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.exit_code, 0);
    const std::string version = run({"--version"}).out;
    EXPECT_TRUE(version.starts_with("vor2 ") && version.find("\ncommit ") != std::string::npos) << version;
    const std::string man = run({"documents", "man"}).out;
    for (const std::string verb :
         {"export", "import", "host", "info", "dump", "diff", "pose", "upgrade", "convert", "optimise"}) {
        EXPECT_NE(help.out.find("\n  " + verb + " "), std::string::npos) << verb;
        EXPECT_NE(man.find(".SS vor2 " + verb + " "), std::string::npos) << verb;
        const Outcome own = run({verb, "--help"});
        EXPECT_EQ(own.exit_code, 0);
        EXPECT_TRUE(own.out.starts_with("vor2 " + verb + ": "));
        EXPECT_NE(own.out.find("--quiet"), std::string::npos);
        for (const std::string shell : {"bash", "zsh", "fish"}) {
            EXPECT_NE(run({"documents", shell}).out.find(verb), std::string::npos) << shell << verb;
        }
    }
    EXPECT_NE(run({"documents", "bash"}).out.find("--allow-outside"), std::string::npos);
}

} // namespace
} // namespace tool_test
