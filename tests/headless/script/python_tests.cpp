#include "script_test.h"

#define MNoVersionString
#define MNoPluginEntry
#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MFileObject.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MPxCommand.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>

namespace headless {
namespace {

std::vector<std::string> written;

class Translator : public MPxFileTranslator {
public:
    MStatus writer(const MFileObject& file, const MString&, FileAccessMode mode) override {
        written.push_back(std::string(file.name().asChar()) + (mode == kExportActiveAccessMode ? " active" : " all"));
        return MStatus::kSuccess;
    }
    bool haveWriteMethod() const override { return true; }
    MString defaultExtension() const override { return "xx"; }
};

class Command : public MPxCommand {
public:
    MStatus doIt(const MArgList& list) override {
        const MArgDatabase flags(syntax(), list);
        for (unsigned int i = 0; i < flags.numberOfFlagUses("-n"); ++i) {
            MArgList values;
            flags.getFlagArgumentList("-n", i, values);
            appendToResult(values.asString(0));
        }
        return MStatus::kSuccess;
    }
    static MSyntax make_syntax() {
        MSyntax out;
        out.addFlag("-n", "-nodes", MSyntax::kString);
        out.makeFlagMultiUse("-n");
        out.addFlag("-r", "-rate", MSyntax::kDouble);
        return out;
    }
};

MStatus initialize(MObject object) {
    MFnPlugin plugin(object);
    plugin.registerFileTranslator("Xx", "", [] { return static_cast<void*>(new Translator); });
    return plugin.registerCommand(
        "listNodes", [] { return static_cast<void*>(new Command); }, Command::make_syntax);
}
MStatus uninitialize(MObject object) {
    MFnPlugin plugin(object);
    plugin.deregisterFileTranslator("Xx");
    return plugin.deregisterCommand("listNodes");
}

class PythonTest : public ScriptTest {
protected:
    PythonTest() {
        written.clear();
        session.offer_plugin("xx", initialize, uninitialize);
        mel("loadPlugin \"plug-ins/xx.so\"");
    }
    ~PythonTest() override { mel("unloadPlugin xx"); }
};

TEST_F(PythonTest, the_export_line_runs_the_translator_of_its_type) {
    const std::string front = "import maya.cmds as cmds;cmds.file(\"", back = "\",f=True ,pr=1 ,typ=\"Xx\",es=1)";
    EXPECT_EQ(python(front + "a" + back), "error: Nothing is selected to be exported");
    mel("createNode joint -n j");
    EXPECT_EQ(python(front + "a b" + back), "a b");
    EXPECT_EQ(python(front + R"(C:\scenes\\q\x41\"\'.yy)" + back), "C:/scenes/qA\"'.yy");
    EXPECT_EQ(python(front + R"(a"c)" + back), "error: line 1:39: SyntaxError: ')' is missing at 'c'");
    EXPECT_EQ(written, (std::vector<std::string>{"a b.xx active", "qA\"'.yy active"}));
    EXPECT_EQ(mel("file -f -ea -type \"Xx\" \"all\""), "all");
    EXPECT_EQ(written.back(), "all.xx all");
}

TEST_F(PythonTest, keywords_become_flags) {
    EXPECT_EQ(python("from maya import cmds\nj = cmds.createNode('joint', name='hip')\n"
                     "cmds.setAttr(j + '.t', 1, -2, 3, type='double3')\nprint(cmds.getAttr('hip.t')[1])"),
              "");
    EXPECT_EQ(messages.back(), "I: -2");
    EXPECT_EQ(python("cmds.ls(sl=True)[0]"), "hip");
    EXPECT_EQ(python("cmds.currentTime(5, edit=True); cmds.setKeyframe('hip', at=['tx', 'ty'])"), "2");
    EXPECT_EQ(python("cmds.keyframe('hip', q=1, at='tx', t=(1, 10))"), "5");
    EXPECT_EQ(python("cmds.currentUnit(query=True, time=True)"), "film");
    EXPECT_EQ(python("cmds.ls(type=('joint', 'mesh'), long=False)"), "hip");
    EXPECT_EQ(python("cmds.listNodes(nodes=['a', 'b'], r=0.5)"), "a b");
    EXPECT_EQ(python("cmds.pluginInfo('xx', q=True, loaded=True)"), "1");
    EXPECT_EQ(python("import maya.mel as mel; mel.eval('listNodes -n \"c\" -n d')"), "c d");
}

TEST_F(PythonTest, strings_are_read_as_python_reads_them) {
    EXPECT_EQ(python(R"(print '''a"b''' "c" r'\n' '\q\102')"), "");
    EXPECT_EQ(messages.back(), R"(I: a"bc\n\qB)");
    EXPECT_EQ(python("print(u'\\u00e4\\n1', 2)"), "");
    EXPECT_EQ(messages.back(), "I: ä\n1 2");
    EXPECT_EQ(python("u'\\u20ac\\x41' + 'a\\\nb'"), "€Aab");
    EXPECT_EQ(python("'\\xzz'"), "error: line 1:2: SyntaxError: a character's number isn't hexadecimal");
}

TEST_F(PythonTest, builtins_and_lines_that_go_on) {
    EXPECT_EQ(python("str(12) + 'a' + \\\n  str(0.5) # and no more\npass\n"), "12a0.5");
    EXPECT_EQ(python("str(12) + 'a' + \\\r\n  str(0.5)"), "12a0.5");
    EXPECT_EQ(python("int(' 12\\n') + int(3.7) + len('abc') + len([1,\n 2])"), "20");
    EXPECT_EQ(python("float('-1e2') + .5"), "-99.5");
    EXPECT_EQ(python("int('nancy')"), "error: ValueError: invalid literal for int() with base 10: 'nancy'");
    EXPECT_EQ(python("int('3.7')"), "error: ValueError: invalid literal for int() with base 10: '3.7'");
    EXPECT_EQ(python("float('')"), "error: ValueError: could not convert to float: ''");
    EXPECT_EQ(python("x = [1] + [2, 3]; x[-1] + x[0]"), "4");
    EXPECT_EQ(python("x = 1 + .; x"), "error: line 1:9: SyntaxError: a value is missing at '.'");
}

TEST_F(PythonTest, plug_ins_tell_what_they_registered) {
    EXPECT_EQ(mel("pluginInfo -q -c \"plug-ins/xx.so\""), "listNodes");
    EXPECT_EQ(mel("pluginInfo -q -t xx") + mel("pluginInfo -q -n \"C:\\\\xx.mll\""), "Xxxx");
    EXPECT_EQ(mel("pluginInfo -q -ls"), "xx");
    EXPECT_EQ(mel("pluginInfo -q xx"), "error: pluginInfo needs a flag that says what is asked");
    EXPECT_EQ(mel("pluginInfo -q -l yy"), "0");
    EXPECT_EQ(mel("pluginInfo -q -c yy"), "error: The plug-in 'yy' isn't loaded");
}

TEST_F(PythonTest, errors_tell_what_and_where) {
    EXPECT_EQ(python("cmd.ls()"), "error: NameError: name 'cmd' is not defined");
    EXPECT_EQ(python("import maya.cmds as cmds\ncmds.blow()"),
              "error: line 2:1: AttributeError: 'module' object has no attribute 'blow'");
    EXPECT_EQ(python("cmds.ls(foo=1)"), "error: TypeError: Invalid flag 'foo'");
    // A fault of syntax is found before anything runs.
    EXPECT_EQ(python("cmds.createNode('joint', n='early')\nx = ("),
              "error: line 2:6: SyntaxError: a value is missing at the end");
    EXPECT_EQ(mel("objExists early"), "0");
    EXPECT_EQ(python("x = 'abc"), "error: line 1:5: SyntaxError: a string has no end");
    EXPECT_EQ(python("x = 1\nimport pymel"), "error: line 2:8: ImportError: No module named pymel");
    EXPECT_EQ(python("from maya import cmd"), "error: ImportError: No module named maya.cmd");
    EXPECT_EQ(python("import os as"), "error: line 1:13: SyntaxError: a name is missing at the end");
    EXPECT_EQ(python("import os\nos.getcwd()"), "error: line 2:1: AttributeError: 'os.getcwd' is not known here");
    EXPECT_EQ(python("range(3)"), "error: NameError: name 'range' is not defined");
    EXPECT_EQ(python("cmds.ls(l=1, 'x')"),
              "error: line 1:14: SyntaxError: an argument without a name behind one with a name at '''");
    EXPECT_EQ(python("[1, 2][5]"), "error: IndexError: list index out of range");
    EXPECT_EQ(mel("listNodes -x"), "error: Invalid flag '-x'");
    EXPECT_EQ(mel("listNodes -r fast"), "error: Flag '-r' must be passed a double argument");
}

} // namespace
} // namespace headless
