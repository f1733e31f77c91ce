#include "tests/headless/api/api_test.h"

#include <maya/MArgDatabase.h>
#include <maya/MStringArray.h>

namespace {

class Arguments : public ApiTest {
protected:
    Arguments() {
        syntax.addFlag("-f", "-filename", MSyntax::kString);
        syntax.addFlag("-rot", "-rotate180", MSyntax::kBoolean);
        syntax.addFlag("-sAt", "-sampleAt", MSyntax::kDouble);
        syntax.addFlag("-n", "-count", MSyntax::kUnsigned);
        syntax.addFlag("-p", "-pair", MSyntax::kLong, MSyntax::kTime);
        syntax.addFlag("-w", "-width", MSyntax::kDistance);
        syntax.addFlag("-s", "-silent");
        syntax.addFlag("-enl", "-exportNodeList", MSyntax::kString);
        syntax.makeFlagMultiUse("-enl");
    }
    static MArgList words(const std::vector<const char*>& list) {
        MArgList out;
        for (const char* word : list) out.addArg(MString(word));
        return out;
    }
    MArgDatabase parse(const std::vector<const char*>& list) { return MArgDatabase(syntax, words(list), &status); }

    MSyntax syntax;
    MStatus status;
};

TEST_F(Arguments, flags_go_by_both_names_and_give_typed_values) {
    const MArgDatabase found =
        parse({"-filename", "a b.vr2", "-rot", "Off", "-sAt", "-2.5e1", "-p", "-3", "2sec", "-s", "-width", "2in"});
    ASSERT_TRUE(status);
    MString name;
    bool rotate = true;
    double rate = 0;
    int first = 0;
    MTime time;
    MDistance width;
    EXPECT_TRUE(found.getFlagArgument("-f", 0, name));
    EXPECT_TRUE(found.getFlagArgument("-rotate180", 0, rotate));
    EXPECT_TRUE(found.getFlagArgument("sAt", 0, rate));
    EXPECT_TRUE(found.getFlagArgument("-p", 0, first));
    EXPECT_TRUE(found.getFlagArgument("-p", 1, time));
    EXPECT_TRUE(found.getFlagArgument("-w", 0, width));
    EXPECT_EQ(name, "a b.vr2");
    EXPECT_FALSE(rotate);
    EXPECT_EQ(rate, -25.0);
    EXPECT_EQ(first, -3);
    EXPECT_EQ(time.value(), 48.0);
    EXPECT_EQ(width.asCentimeters(), 5.08);
    EXPECT_TRUE(found.isFlagSet("-silent"));
    EXPECT_FALSE(found.isFlagSet("-enl"));
    EXPECT_FALSE(found.getFlagArgument("-enl", 0, name));
    EXPECT_FALSE(found.getFlagArgument("-f", 1, name));
    EXPECT_FALSE(found.getFlagArgument("-f", 0, rate)); // no number
    EXPECT_EQ(found.numberOfFlagsUsed(), 6u);
    found.isFlagSet("-unheard", &status);
    EXPECT_FALSE(status);
}

TEST_F(Arguments, booleans_read_the_hosts_eight_words) {
    for (const char* word : {"1", "true", "on", "yes", "TRUE"})
        EXPECT_TRUE(parse({"-rot", word}).flagArgumentBool("-rot", 0)) << word;
    for (const char* word : {"0", "false", "off", "no"}) {
        EXPECT_FALSE(parse({"-rot", word}).flagArgumentBool("-rot", 0)) << word;
        EXPECT_TRUE(status);
    }
}

TEST_F(Arguments, a_multi_use_flag_keeps_each_use_and_another_its_last) {
    const MArgParser found = parse({"-enl", "a", "-f", "one", "-exportNodeList", "b", "-f", "two", "-enl", "a"});
    ASSERT_TRUE(status);
    ASSERT_EQ(found.numberOfFlagUses("-enl"), 3u);
    MStringArray nodes;
    for (unsigned int use = 0; use < 3; ++use) {
        MArgList list;
        ASSERT_TRUE(found.getFlagArgumentList("-enl", use, list));
        nodes.insert(list.asString(0), use);
    }
    EXPECT_EQ(nodes[0] + nodes[1] + nodes[2], "aba");
    EXPECT_EQ(found.numberOfFlagUses("-f"), 1u);
    EXPECT_EQ(found.flagArgumentString("-f", 0), "two");
    MArgList none;
    EXPECT_FALSE(found.getFlagArgumentList("-enl", 3, none));
    unsigned int position = 0;
    EXPECT_TRUE(found.getFlagArgumentPosition("-enl", 1, position));
    EXPECT_EQ(position, 5u);
}

TEST_F(Arguments, what_the_syntax_does_not_take_is_refused_in_the_hosts_words) {
    const std::pair<std::vector<const char*>, const char*> cases[] = {
        {{"-x"}, "E: Invalid flag '-x'"},
        {{"-sAt"}, "E: Flag '-sAt' must be passed a double argument"},
        {{"-sampleAt", "fast"}, "E: Flag '-sampleAt' must be passed a double argument"},
        {{"-sAt", "1e999"}, "E: Flag '-sAt' must be passed a double argument"},
        {{"-rot", "maybe"}, "E: Flag '-rot' must be passed a boolean argument"},
        {{"-n", "-1"}, "E: Flag '-n' must be passed an unsigned int argument"},
        {{"-p", "1.5", "1"}, "E: Flag '-p' must be passed an int argument"},
        {{"-p", "1"}, "E: Flag '-p' must be passed a time argument"},
        {{"-w", "2parsec"}, "E: Flag '-w' must be passed a distance argument"},
        {{"-f", "-sAt", "30"}, "E: Flag '-f' must be passed a string argument"},
        {{"stray"}, "E: Too many arguments: 'stray'"},
    };
    for (const auto& [list, message] : cases) {
        messages.clear();
        const MArgDatabase found = parse(list);
        EXPECT_FALSE(status) << message;
        EXPECT_EQ(messages, Names{message});
        EXPECT_EQ(found.numberOfFlagsUsed(), 0u);
    }
    EXPECT_EQ(parse({"-f", "-unheard"}).flagArgumentString("-f", 0), "-unheard"); // no flag has that name
}

TEST_F(Arguments, plain_arguments_and_objects_follow_the_syntax) {
    make("joint", "a");
    syntax.addArg(MSyntax::kDouble);
    syntax.setObjectType(MSyntax::kSelectionList, 0, 1);
    syntax.useSelectionAsDefault(true);
    const MArgDatabase found = parse({"-1.5", "a", "-s"});
    ASSERT_TRUE(status);
    EXPECT_EQ(found.commandArgumentDouble(0), -1.5);
    MSelectionList objects;
    EXPECT_TRUE(found.getObjects(objects));
    EXPECT_EQ(names(objects), Names{"|a"});
    MGlobal::selectByName("front", MGlobal::kReplaceList);
    EXPECT_TRUE(parse({"1"}).getObjects(objects));
    EXPECT_EQ(names(objects), Names{"|front"});
    parse({});
    EXPECT_FALSE(status);
    parse({"word"});
    EXPECT_FALSE(status);
    parse({"1", "a", "front"});
    EXPECT_FALSE(status);
    parse({"1", "nobody"});
    EXPECT_EQ(messages.back(), "E: No object matches name: nobody");
}

TEST_F(Arguments, a_query_takes_flags_without_their_arguments) {
    syntax.enableQuery(true);
    const MArgDatabase found = parse({"-query", "-sAt", "-rot"});
    ASSERT_TRUE(status);
    EXPECT_TRUE(found.isQuery());
    EXPECT_FALSE(found.isEdit());
    EXPECT_TRUE(found.isFlagSet("-sampleAt"));
    parse({"-edit"});
    EXPECT_FALSE(status);
}

TEST_F(Arguments, a_flag_name_is_taken_once) {
    EXPECT_FALSE(syntax.addFlag("-f", "-fresh"));
    EXPECT_FALSE(syntax.addFlag("-fr", "-filename"));
    EXPECT_FALSE(syntax.addFlag("", "-fresh"));
    EXPECT_FALSE(syntax.makeFlagMultiUse("-fresh"));
    EXPECT_TRUE(syntax.addFlag("fr", "fresh"));
    EXPECT_TRUE(parse({"-fresh"}).isFlagSet("-fr"));
}

TEST_F(Arguments, a_plain_list_finds_flags_and_converts_words) {
    const MArgList list = words({"a", "-x", "12", "-long", "yes"});
    EXPECT_EQ(list.flagIndex("x"), 1u);
    EXPECT_EQ(list.flagIndex("-l", "-long"), 3u);
    EXPECT_EQ(list.flagIndex("y"), MArgList::kInvalidArgIndex);
    EXPECT_EQ(list.asInt(2), 12);
    EXPECT_TRUE(list.asBool(4));
    list.asDouble(0, &status);
    EXPECT_FALSE(status);
    EXPECT_EQ(list.asString(9, &status), "");
    EXPECT_FALSE(status);
}

} // namespace
