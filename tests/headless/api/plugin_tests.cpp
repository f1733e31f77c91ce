#include "tests/headless/api/api_test.h"
#include "tests/temporary.h"

#include <maya/MArgDatabase.h>
#include <maya/MFileIO.h>

#define MNoPluginEntry
#define MNoVersionString
#include <maya/MFnPlugin.h>

#include <cstdio>
#include <fstream>

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
        last_call = what + std::string(file.name().asChar()) + " " + std::to_string(mode);
        return file.name() == "broken.toy" ? MStatus::kFailure : MStatus::kSuccess;
    }
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
    EXPECT_TRUE(session.unload_plugin("toys"));
    EXPECT_FALSE(session.has_command("add"));
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

} // namespace
