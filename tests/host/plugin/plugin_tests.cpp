#include "tests/host/host_test.h"

#include "headless/script/interpreter.h"
#include "host/plugin/translator.h"

#include <maya/MAnimControl.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace VOR2_EXPORTER_MAYA {
namespace {

using TEXTS = std::vector<std::string>;

class PLUGIN : public HOST_TEST {
protected:
    PLUGIN() {
        MAnimControl::setMinTime(MTime(2.5));
        MAnimControl::setMaxTime(MTime(7.1));
    }
    /// The settings as one line.
    static std::string settings() {
        const EXPORT_SETTINGS& s = export_settings();
        std::ostringstream out;
        out << s.file_name.asChar() << '|' << s.strip_namespace << s.rotate_180 << s.update_view << '|' << s.start_frame
            << '|' << s.stop_frame << '|' << s.sample_at << '|' << s.use_node_origin.asChar() << '|';
        for (unsigned int i = 0; i < s.export_node_list.length(); ++i) out << s.export_node_list[i].asChar() << ',';
        return out.str();
    }
    bool export_with(const std::vector<std::string>& flags) {
        return static_cast<bool>(session.run_command("VOR2Export", flags));
    }
};

TEST_F(PLUGIN, takes_each_flag_by_both_names_and_forgets_it_at_the_next_call) {
    const std::string defaults = "|111|2.5|7.1|60||";
    struct CASE {
        TEXTS short_form, long_form;
        const char* settings;
    };
    const CASE cases[] = {
        {{"-sns", "off"}, {"-stripNamespace", "0"}, "|011|2.5|7.1|60||"},
        {{"-rot", "no"}, {"-rotate180", "false"}, "|101|2.5|7.1|60||"},
        {{"-u", "false"}, {"-updateView", "off"}, "|110|2.5|7.1|60||"},
        {{"-st", "-3.5"}, {"-start", "-3.5"}, "|111|-3.5|7.1|60||"},
        {{"-end", "9"}, {"-stop", "9"}, "|111|2.5|9|60||"},
        {{"-sAt", "30"}, {"-sampleAt", "30"}, "|111|2.5|7.1|30||"},
        {{"-uno", "hips"}, {"-useNodeOrigin", "hips"}, "|111|2.5|7.1|60|hips|"},
        {{"-enl", "c", "-enl", "a", "-enl", "b"},
         {"-exportNodeList", "c", "-enl", "a", "-exportNodeList", "b"},
         "|111|2.5|7.1|60||c,a,b,"},
        {{"-f", "/a b/x.vr2"}, {"-filename", "/a b/x.vr2"}, "/a b/x.vr2|111|2.5|7.1|60||"},
    };
    session.set_python([](headless::Session&, const std::string&) { return headless::CommandResult(); });
    for (const CASE& one : cases) {
        for (const TEXTS& flags : {one.short_form, one.long_form}) {
            EXPECT_TRUE(export_with(flags));
            EXPECT_EQ(settings(), one.settings);
            EXPECT_TRUE(export_with({}));
            EXPECT_EQ(settings(), defaults);
        }
    }
    headless::install_interpreters(session);
    EXPECT_EQ(export_settings().start_frame, 2.5);
    EXPECT_EQ(export_settings().stop_frame, static_cast<double>(7.1F)); // on its way through single precision
}

TEST_F(PLUGIN, hands_over_to_the_host_in_one_line_of_python) {
    static std::string line;
    session.set_python([](headless::Session&, const std::string& text) {
        line = text;
        return headless::CommandResult();
    });
    EXPECT_TRUE(export_with({"-f", "C:\\a\"b"}));
    EXPECT_EQ(line, "import maya.cmds as cmds;cmds.file(\"C:\\a\"b\",f=True ,pr=1 ,typ=\"Vor2\",es=1)");
    headless::install_interpreters(session);
}

TEST_F(PLUGIN, refuses_wrong_flags_before_anything_is_taken) {
    export_settings().sample_at = 17;
    EXPECT_FALSE(export_with({"-nope"}));
    EXPECT_FALSE(export_with({"-sAt", "fast"}));
    EXPECT_FALSE(export_with({"-sAt"}));
    EXPECT_FALSE(session.run_command("VOR2Import", {"-sAt", "30"}));
    EXPECT_EQ(export_settings().sample_at, 17);
}

TEST_F(PLUGIN, exports_and_imports_through_scripts) {
    make("joint", "hips");
    const std::string file = temporary_folder() + "plugin tests.vr2";
    std::filesystem::remove(file);
    ASSERT_TRUE(session.run_mel("select -r hips; VOR2Export -f \"" + file + "\" -st 0 -end 1"));
    EXPECT_TRUE(said("I: Done."));
    std::filesystem::remove(file);
    ASSERT_TRUE(session.run_mel("select -cl; VOR2Export -f \"" + file + "\" -st 0 -end 1 -enl hips"));
    EXPECT_TRUE(std::filesystem::exists(file)) << "named nodes need no selection";
    EXPECT_TRUE(session.scene().selection.items().empty());
    session.new_scene();
    ASSERT_TRUE(session.run_mel("VOR2Import -f \"" + file + "\""));
    EXPECT_EQ(path_of("hips").fullPathName(), "|Exporter_Inserted_Root|hips");
    // The file translator alone works with what the last command left, and tells of failures.
    select({"hips"});
    EXPECT_TRUE(session.export_selected(file, "Vor2"));
    EXPECT_EQ(export_settings().stop_frame, 1.0);
    EXPECT_FALSE(session.export_selected("/nowhere/x.vr2", "Vor2"));
    EXPECT_TRUE(export_with({"-f", "/nowhere/x.vr2"}));
    EXPECT_TRUE(said("E: Failed to write vor2 file: " + std::filesystem::absolute("/nowhere/x.vr2").generic_string()));
    EXPECT_TRUE(session.run_command("VOR2Import", {"-f", "/nowhere/x.vr2"}));
}

TEST_F(PLUGIN, knows_its_files_by_name_alone) {
    const auto kind = [](const char* name) {
        MFileObject file;
        file.setRawFullName(name);
        return TRANSLATOR().identifyFile(file, "\1\62\122\126", 4);
    };
    EXPECT_EQ(kind("/a/x.vr2"), MPxFileTranslator::kIsMyFileType);
    EXPECT_EQ(kind("/a/X.VR2"), MPxFileTranslator::kIsMyFileType);
    for (const char* other : {"/a/.vr2", "/a/x.vr", "/a/x.vr22", "/a/xvr2", "/a.vr2/x"})
        EXPECT_EQ(kind(other), MPxFileTranslator::kNotMyFileType) << other;
}

TEST_F(PLUGIN, has_its_commands_even_where_its_file_type_is_taken) {
    ASSERT_TRUE(session.unload_plugin("vor2"));
    session.translators["Vor2"] = {"another", TRANSLATOR::creator};
    EXPECT_TRUE(session.load_plugin("vor2", initializePlugin, uninitializePlugin));
    EXPECT_TRUE(session.has_command("VOR2Export"));
    EXPECT_TRUE(session.has_command("VOR2Import"));
    session.translators.erase("Vor2");
}

} // namespace
} // namespace VOR2_EXPORTER_MAYA
