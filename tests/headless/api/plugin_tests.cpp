#include "tests/headless/api/api_test.h"
#include "tests/temporary.h"

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MArgParser.h>
#include <maya/MDoubleArray.h>
#include <maya/MFileIO.h>
#include <maya/MFileObject.h>
#include <maya/MIntArray.h>
#include <maya/MPxCommand.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>

#define MNoPluginEntry
#define MNoVersionString
#include <maya/MFnPlugin.h>

#include <cstdio>
#include <fstream>
#include <functional>

namespace {

std::string last_call;

class Toy : public MPxFileTranslator {
public:
    static void* creator() { return new Toy; }
    static void* no_creator() { return nullptr; }
    MStatus reader(const MFileObject& file, const MString&, FileAccessMode mode) override {
        return call("read ", file, mode);
    }
    MStatus writer(const MFileObject& file, const MString&, FileAccessMode mode) override {
        return call("write ", file, mode);
    }
    bool haveReadMethod() const override { return true; }
    bool haveWriteMethod() const override { return true; }
    MString defaultExtension() const override { return "toy"; }
    MFileKind identifyFile(const MFileObject& file, const char* start, short size) const override {
        return size > 2 && start[0] == 'T' && file.name().length() > 3 ? kIsMyFileType : kNotMyFileType;
    }

private:
    MStatus call(const char* what, const MFileObject& file, FileAccessMode mode) {
        EXPECT_EQ(fileAccessMode(), mode);
        EXPECT_EQ(MFileIO::isReadingFile(), *what == 'r');
        EXPECT_EQ(MFileIO::isWritingFile(), *what == 'w');
        last_call = what + std::string(file.name().asChar()) + " " + std::to_string(mode);
        return file.name() == "broken.toy" ? MStatus::kFailure : MStatus::kSuccess;
    }
};

/// Says that it reads, and leaves all else as the host has it.
class Lazy : public MPxFileTranslator {
public:
    static void* creator() { return new Lazy; }
    bool haveReadMethod() const override { return true; }
};

/// Does what the test at hand asks for.
class Tell : public MPxCommand {
public:
    static void* creator() { return new Tell; }
    MStatus doIt(const MArgList&) override {
        EXPECT_FALSE(hasSyntax());
        EXPECT_FALSE(isUndoable());
        action();
        return MStatus::kSuccess;
    }
    static inline std::function<void()> action;
};

class Add : public MPxCommand {
public:
    static void* creator() { return new Add; }
    static MSyntax make_syntax() {
        MSyntax out;
        out.addFlag("-a", "-addend", MSyntax::kLong);
        out.makeFlagMultiUse("-a");
        return out;
    }
    MStatus doIt(const MArgList& words) override {
        EXPECT_TRUE(hasSyntax());
        ++calls;
        MStatus status;
        const MArgParser found(syntax(), words, &status);
        if (!status) return status;
        int sum = 0;
        for (unsigned int use = 0; use < found.numberOfFlagUses("-a"); ++use) {
            MArgList list;
            found.getFlagArgumentList("-a", use, list);
            sum += list.asInt(0);
        }
        if (sum == 13) return MStatus::kFailure;
        setResult(sum);
        return MStatus::kSuccess;
    }
    static inline int calls = 0;
};

MStatus start(MObject object) {
    MStatus status;
    MFnPlugin plugin(object, "maker", "1.0", "Any", &status);
    EXPECT_TRUE(status);
    EXPECT_EQ(plugin.name(), "toys");
    EXPECT_EQ(plugin.vendor(), "maker");
    EXPECT_EQ(plugin.version(), "1.0");
    EXPECT_EQ(plugin.apiVersion(), "Any");
    plugin.setVersion("1.1");
    EXPECT_EQ(plugin.version(), "1.1");
    EXPECT_TRUE(plugin.registerFileTranslator("Lazy", nullptr, Lazy::creator));
    EXPECT_TRUE(plugin.registerCommand("tell", Tell::creator));
    EXPECT_TRUE(plugin.registerFileTranslator("Toy", "toy.ico", Toy::creator));
    EXPECT_FALSE(plugin.registerFileTranslator("Toy", "toy.ico", Toy::creator));
    EXPECT_FALSE(plugin.registerCommand("nothing", nullptr));
    return plugin.registerCommand("add", Add::creator, Add::make_syntax);
}

MStatus stop(MObject object) {
    MFnPlugin plugin(object);
    EXPECT_TRUE(plugin.deregisterFileTranslator("Toy"));
    EXPECT_FALSE(plugin.deregisterFileTranslator("Toy"));
    return plugin.deregisterCommand("add");
}

MStatus start_badly(MObject object) {
    MFnPlugin plugin(object);
    plugin.registerCommand("half", Add::creator);
    return MStatus::kFailure;
}

class Plugins : public ApiTest {
protected:
    Plugins() { EXPECT_TRUE(session.load_plugin("toys", start, stop)); }
    ~Plugins() override {
        if (session.is_plugin_loaded("toys")) (void)session.unload_plugin("toys");
    }
    static std::string file(const char* name, const char* contents) {
        const std::string out = temporary_folder() + name;
        std::ofstream(out) << contents;
        return out;
    }
};

TEST_F(Plugins, come_and_go_with_all_they_registered) {
    EXPECT_TRUE(session.is_plugin_loaded("toys"));
    EXPECT_TRUE(session.load_plugin("toys", start, stop)); // already there
    EXPECT_TRUE(session.has_command("add"));
    EXPECT_EQ(session.loaded_plugins(), Names{"toys"});
    EXPECT_TRUE(session.unload_plugin("toys"));
    EXPECT_FALSE(session.has_command("add"));
    EXPECT_FALSE(session.has_command("tell")); // though it was left behind
    EXPECT_TRUE(session.loaded_plugins().empty());
    EXPECT_FALSE(session.unload_plugin("toys"));
    EXPECT_FALSE(session.load_plugin("bad", start_badly, nullptr));
    EXPECT_FALSE(session.has_command("half"));
    MObject none;
    MStatus status;
    MFnPlugin outside(none, "maker", "1", "Any", &status);
    EXPECT_FALSE(status);
    EXPECT_FALSE(outside.registerCommand("late", Add::creator));
}

TEST_F(Plugins, commands_check_their_words_before_they_run) {
    const auto sum = session.run_command("add", {"-a", "4", "-addend", "-1"});
    ASSERT_TRUE(sum);
    EXPECT_EQ(sum->text(), "3");
    const int calls = Add::calls;
    EXPECT_EQ(session.run_command("add", {"-b"}).error().message, "Invalid flag '-b'");
    EXPECT_EQ(session.run_command("add", {"-a", "x"}).error().message, "Flag '-a' must be passed an int argument");
    EXPECT_EQ(Add::calls, calls);
    EXPECT_FALSE(session.run_command("add", {"-a", "13"}));
    EXPECT_EQ(session.run_command("subtract", {}).error().message, "Cannot find procedure \"subtract\"");
}

TEST_F(Plugins, translators_read_by_type_or_by_recognition) {
    const std::string good = file("good.toy", "Toy!"), broken = file("broken.toy", "Toy!"), other = file("x.etc", "?");
    EXPECT_TRUE(MFileIO::importFile(good.c_str(), "Toy"));
    EXPECT_EQ(last_call, "read good.toy 3");
    EXPECT_TRUE(MFileIO::importFile(good.c_str()));
    EXPECT_TRUE(MFileIO::open(good.c_str(), nullptr, true));
    EXPECT_EQ(last_call, "read good.toy 1");
    EXPECT_EQ(MFileIO::currentFile(), good.c_str());
    EXPECT_FALSE(MFileIO::importFile(broken.c_str(), "Toy"));
    EXPECT_FALSE(MFileIO::importFile(other.c_str()));
    EXPECT_FALSE(MFileIO::importFile(good.c_str(), "Unheard"));
    EXPECT_FALSE(MFileIO::importFile((good + ".gone").c_str(), "Toy"));
    EXPECT_EQ(MPxFileTranslator::fileAccessMode(), MPxFileTranslator::kUnknownAccessMode);
}

TEST_F(Plugins, a_failed_open_of_a_file_nobody_reads_leaves_the_scene) {
    make("joint", "kept");
    EXPECT_FALSE(MFileIO::open(file("x.etc", "?").c_str(), nullptr, true));
    EXPECT_FALSE(node("kept").isNull());
    EXPECT_FALSE(MFileIO::open(file("good.toy", "Toy!").c_str())); // changes would be lost
    EXPECT_FALSE(MFileIO::newFile());
}

TEST_F(Plugins, exporting_the_selection_needs_one_and_adds_the_extension) {
    EXPECT_FALSE(MFileIO::exportSelected("/tmp/out", "Toy"));
    EXPECT_EQ(messages.back(), "E: Nothing is selected to be exported");
    MGlobal::selectByName("persp");
    EXPECT_TRUE(MFileIO::exportSelected("/tmp/out", "Toy"));
    EXPECT_EQ(last_call, "write out.toy 6");
    EXPECT_TRUE(MFileIO::exportSelected("/tmp/out.dir/o.x", "Toy"));
    EXPECT_EQ(last_call, "write o.x 6");
    EXPECT_FALSE(MFileIO::exportSelected("", "Toy"));
    EXPECT_FALSE(MFileIO::exportSelected("/tmp/broken.toy", "Toy"));
}

TEST_F(Plugins, commands_give_results_of_one_kind_and_messages) {
    const auto result = [this](const std::function<void()>& action) {
        Tell::action = action;
        const auto given = session.run_command("tell", {});
        return given ? given->text() : "failed";
    };
    EXPECT_EQ(result([] { MPxCommand::setResult(true); }), "1");
    EXPECT_EQ(result([] { MPxCommand::setResult(3000000000u); }), "3000000000");
    EXPECT_EQ(result([] { MPxCommand::setResult(0.5); }), "0.5");
    EXPECT_EQ(result([] { MPxCommand::setResult(MString("a b")); }), "a b");
    MIntArray wholes;
    MDoubleArray numbers;
    MStringArray words;
    for (const int i : {3, -1}) {
        wholes.append(i);
        numbers.append(i + 0.5);
        words.append(MString("w") + i);
    }
    EXPECT_EQ(result([&] { MPxCommand::setResult(wholes); }), "3 -1");
    EXPECT_EQ(result([&] { MPxCommand::setResult(numbers); }), "3.5 -0.5");
    EXPECT_EQ(result([&] { MPxCommand::setResult(words); }), "w3 w-1");
    const auto mixed = [&] {
        MPxCommand::setResult(1.5);
        MPxCommand::appendToResult(2.5);
        MPxCommand::appendToResult(7); // of another kind: left out
        MPxCommand::appendToResult(MString("x"));
    };
    EXPECT_EQ(result(mixed), "1.5 2.5");
    const auto nested = [&] { // each command has a result of its own
        MPxCommand::setResult(words);
        EXPECT_EQ(session.run_command("add", {"-a", "2"})->text(), "2");
        MPxCommand::appendToResult(0.5);
    };
    EXPECT_EQ(result(nested), "w3 w-1");
    const auto none = [&] {
        MPxCommand::setResult(words);
        MPxCommand::clearResult();
        MPxCommand::displayInfo("i");
        MPxCommand::displayWarning("w");
        MPxCommand::displayError("e");
    };
    EXPECT_EQ(result(none), "");
    EXPECT_EQ(messages, (Names{"I: i", "W: w", "E: e"}));
}

TEST_F(Plugins, a_translator_does_nothing_that_it_does_not_say) {
    const Lazy lazy;
    EXPECT_FALSE(lazy.haveWriteMethod() || lazy.haveNamespaceSupport() || lazy.haveReferenceMethod());
    EXPECT_FALSE(Lazy().allowMultipleFileOptimization());
    EXPECT_TRUE(lazy.canBeOpened());
    EXPECT_EQ(lazy.defaultExtension(), "");
    EXPECT_EQ(lazy.filter(), "*.*");
    const std::string other = file("x.etc", "?");
    EXPECT_FALSE(MFileIO::importFile(other.c_str(), "Lazy")); // its reader is the host's, which fails
    EXPECT_FALSE(MFileIO::importFile(other.c_str()));         // it takes no file for its own
    MGlobal::selectByName("persp");
    EXPECT_FALSE(MFileIO::exportSelected(other.c_str(), "Lazy"));
    EXPECT_FALSE(MFileIO::isReadingFile() || MFileIO::isWritingFile());
}

TEST_F(Plugins, a_scene_is_saved_found_again_and_begun_anew) {
    const std::string name = temporary_folder() + "vor2_api_saved.ma";
    make("joint", "kept");
    ASSERT_TRUE(MFileIO::saveAs(name.c_str()));
    EXPECT_EQ(MFileIO::currentFile(), name.c_str());
    make("joint", "lost");
    EXPECT_FALSE(MFileIO::newFile()); // changes would be lost
    ASSERT_TRUE(MFileIO::newFile(true));
    EXPECT_TRUE(node("kept").isNull());
    EXPECT_EQ(MFileIO::currentFile(), "");
    ASSERT_TRUE(MFileIO::open(name.c_str()));
    EXPECT_FALSE(node("kept").isNull());
    EXPECT_TRUE(node("lost").isNull());
    std::remove(name.c_str());
}

} // namespace
