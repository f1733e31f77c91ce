#include "tests/headless/api/api_test.h"

#include <maya/MAngle.h>
#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MDistance.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>

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

TEST_F(Arguments, a_plain_list_takes_and_gives_every_kind) {
    MArgList list = words({"2sec", "30deg", "2m", "x"});
    EXPECT_TRUE(list.addArg(true));
    EXPECT_TRUE(list.addArg(-7));
    EXPECT_TRUE(list.addArg(0.1));
    EXPECT_EQ(list.length(), 7u);
    EXPECT_EQ(list.asTime(0).as(MTime::kFilm), 48.0);
    EXPECT_NEAR(list.asAngle(1).asRadians(), 0.52359877559829887, 1e-15);
    EXPECT_EQ(list.asDistance(2).asCentimeters(), 200.0);
    bool truth = false;
    int whole = 0;
    double number = 0;
    MString word;
    EXPECT_TRUE(list.get(4, truth));
    EXPECT_TRUE(list.get(5, whole));
    EXPECT_TRUE(list.get(6, number));
    EXPECT_TRUE(list.get(3, word));
    EXPECT_TRUE(truth);
    EXPECT_EQ(whole, -7);
    EXPECT_EQ(number, 0.1);
    EXPECT_EQ(word, "x");
    EXPECT_EQ(list.get(6, whole), MStatus::kFailure); // no whole number
    EXPECT_EQ(whole, -7);
    EXPECT_EQ(list.get(7, number), MStatus::kInvalidParameter);
    list.asAngle(3, &status);
    EXPECT_FALSE(status);
    EXPECT_FALSE(words({"+-1"}).get(0, number));
    MArgList made;
    EXPECT_TRUE(made.addArg(100000)); // which is shorter as a power of ten
    EXPECT_EQ(made.asInt(0), 100000);
}

TEST_F(Arguments, plain_arguments_come_typed_and_objects_by_name) {
    make("joint", "a");
    for (const MSyntax::MArgType type : {MSyntax::kBoolean, MSyntax::kLong, MSyntax::kString, MSyntax::kSelectionItem})
        ASSERT_TRUE(syntax.addArg(type));
    EXPECT_FALSE(syntax.addArg(MSyntax::kNoArg));
    ASSERT_TRUE(syntax.setObjectType(MSyntax::kStringObjects, 1));
    EXPECT_FALSE(syntax.setObjectType(MSyntax::kStringObjects, 2, 1));
    const MArgDatabase found = parse({"yes", "-3", "4", "a", "b", "anything"});
    ASSERT_TRUE(status);
    bool truth = false;
    int whole = 0;
    double number = 0;
    MString word;
    EXPECT_TRUE(found.getCommandArgument(0, truth));
    EXPECT_TRUE(found.getCommandArgument(1, whole));
    EXPECT_TRUE(found.getCommandArgument(2, number));
    EXPECT_TRUE(found.getCommandArgument(2, word));
    EXPECT_TRUE(truth && found.commandArgumentBool(0));
    EXPECT_EQ(whole, -3);
    EXPECT_EQ(found.commandArgumentInt(1), -3);
    EXPECT_EQ(number, 4.0);
    EXPECT_EQ(word, "4");
    EXPECT_EQ(found.commandArgumentString(3), "a");
    found.commandArgumentInt(3, &status);
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_EQ(found.getCommandArgument(4, word), MStatus::kInvalidParameter);
    MSelectionList list;
    EXPECT_TRUE(found.getCommandArgument(3, list));
    EXPECT_EQ(names(list), Names{"|a"});
    EXPECT_FALSE(found.getCommandArgument(2, list)); // nothing has that name
    EXPECT_TRUE(list.isEmpty());
    MStringArray objects;
    EXPECT_TRUE(found.getObjects(objects));
    EXPECT_EQ(objects.length(), 2u);
    EXPECT_EQ(objects[1], "anything");
    parse({"1", "2", "3", "nobody", "b"});
    EXPECT_EQ(messages.back(), "E: Argument 4 must be an object");
    parse({"1", "2", "3", "a"});
    EXPECT_EQ(messages.back(), "E: Too few objects named");
    syntax.setMinObjects(0);
    syntax.setMaxObjects(1);
    parse({"1", "2", "3", "a"});
    EXPECT_TRUE(status);
    parse({"1", "2", "3", "a", "b", "c"});
    EXPECT_EQ(messages.back(), "E: Too many arguments: 'c'");
}

TEST_F(Arguments, flags_take_angles_counts_and_objects) {
    make("joint", "a");
    syntax.addFlag("-t", "-turn", MSyntax::kAngle);
    syntax.addFlag("-o", "-on", MSyntax::kSelectionItem);
    const MArgDatabase given = parse({"-turn", "0.5", "-n", "3", "-on", "a", "-p", "-2", "1", "-sAt", "2"});
    ASSERT_TRUE(status);
    MArgDatabase found = parse({});
    found = given;
    MAngle turn;
    unsigned int count = 0;
    MSelectionList list;
    EXPECT_TRUE(found.getFlagArgument("-t", 0, turn)); // in the scene's unit, degrees
    EXPECT_NEAR(turn.asDegrees(), 0.5, 1e-15);
    EXPECT_TRUE(found.getFlagArgument("-n", 0, count));
    EXPECT_EQ(count, 3u);
    EXPECT_FALSE(found.getFlagArgument("-p", 0, count)); // below 0
    EXPECT_EQ(found.flagArgumentInt("-p", 0), -2);
    EXPECT_EQ(found.flagArgumentDouble("-sAt", 0), 2.0);
    EXPECT_TRUE(found.getFlagArgument("-o", 0, list));
    EXPECT_EQ(names(list), Names{"|a"});
    EXPECT_FALSE(found.getFlagArgument("-f", 0, list));
    EXPECT_TRUE(list.isEmpty());
    parse({"-t", "1parsec"});
    EXPECT_EQ(messages.back(), "E: Flag '-t' must be passed an angle argument");
    parse({"-o", "nobody"});
    EXPECT_EQ(messages.back(), "E: Flag '-o' must be passed an object argument");
}

TEST_F(Arguments, some_flags_want_their_arguments_in_a_query_too) {
    EXPECT_FALSE(syntax.canQuery() || syntax.canEdit());
    syntax.enableQuery(true);
    syntax.enableEdit(true);
    EXPECT_TRUE(syntax.canQuery() && syntax.canEdit());
    EXPECT_TRUE(syntax.makeFlagQueryWithFullArgs("-sAt", false));
    EXPECT_TRUE(syntax.makeFlagQueryWithFullArgs("-p", true)); // or may have them
    EXPECT_EQ(syntax.makeFlagQueryWithFullArgs("-unheard", false), MStatus::kInvalidParameter);
    EXPECT_TRUE(parse({"-e", "-sAt", "1"}).isEdit());
    EXPECT_EQ(parse({"-q", "-sAt", "1.5"}).flagArgumentDouble("-sAt", 0), 1.5);
    parse({"-q", "-sAt"});
    EXPECT_FALSE(status);
    EXPECT_TRUE(parse({"-q", "-p", "-s"}).isFlagSet("-s"));
    EXPECT_TRUE(status);
    EXPECT_EQ(parse({"-q", "-p", "4", "5"}).flagArgumentInt("-p", 0), 4);
    EXPECT_TRUE(status);
}

} // namespace
