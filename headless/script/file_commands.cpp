// file: opening, saving, importing and exporting.
#include "headless/api/translators.h"
#include "headless/files/ma_reader.h"
#include "headless/script/commands.h"
#include "support/platform/native_path.h"

#include <filesystem>

namespace headless {

using VOR2_LOADER::platform::native_path;
namespace {

bool is_maya_ascii(const std::string& path, const std::string& type) {
    return type == "mayaAscii" || (type.empty() && path.ends_with(".ma"));
}

// The host's own type is what readers go by anyway; others are those of translators.
std::string translator_type(const Arguments& arguments) {
    const std::string* type = arguments.text("typ");
    return type && *type != "mayaAscii" ? *type : std::string();
}

Result<CommandResult> told(const Result<void>& done, const std::string& path) {
    if (!done) return done.error();
    return text_result(forward_slashes(path));
}

Result<CommandResult> answer(Session& session, const Arguments& arguments) {
    const Scene& scene = session.scene();
    std::error_code ignored;
    if (arguments.has("ex"))
        return integer_result(
            arguments.count() == 1 && std::filesystem::exists(native_path(arguments[0]), ignored) ? 1 : 0);
    if (arguments.has("mf")) return integer_result(scene.modified ? 1 : 0);
    if (arguments.has("exn") && arguments.count() == 1)
        return text_result(forward_slashes(std::filesystem::absolute(native_path(arguments[0]), ignored).string()));
    if (arguments.has("sn")) {
        const std::string& name = scene.file_name;
        return text_result(arguments.has("shn") ? name.substr(name.rfind('/') + 1) : name);
    }
    if (arguments.has("typ")) return texts_result({"mayaAscii"});
    if (arguments.has("l")) return texts_result({scene.file_name});
    return Error{"file needs a flag that says what is asked"};
}

bool loses_changes(Session& session, const Arguments& arguments) {
    return session.scene().modified && !arguments.has("f");
}

Result<CommandResult> save(Session& session) {
    const std::string name = session.scene().file_name;
    if (name.empty()) return Error{"The scene has no name to be saved under; give it one with -rename"};
    return told(session.save_as(name), name);
}

// The nodes go into a namespace; a translator puts them where it will, so for it there is none.
Result<CommandResult> import(Session& session, const Arguments& arguments, const std::string& path, bool reference) {
    const std::string* name_space = arguments.text("ns");
    const std::string* type = arguments.text("typ");
    if ((name_space || reference) && is_maya_ascii(path, type ? *type : "")) {
        const std::string stem = native_path(forward_slashes(path)).stem().string();
        return told(read_maya_ascii(session.scene(), path, {name_space ? *name_space : stem, session.file_search}),
                    path);
    }
    return told(session.import_file(path, translator_type(arguments)), path);
}

Result<CommandResult> export_scene(Session& session, const Arguments& arguments, const std::string& path) {
    const std::string type = translator_type(arguments);
    if (type.empty()) return Error{"An export needs the type of a file translator (-type)"};
    if (arguments.has("es")) return told(session.export_selected(path, type), path);
    return told(write_through_translator(session, path, type, MPxFileTranslator::kExportAccessMode), path);
}

Result<CommandResult> file(Session& session, const Arguments& arguments) {
    if (arguments.query() || arguments.has("ex")) return answer(session, arguments);
    if (arguments.has("new")) {
        if (loses_changes(session, arguments)) return Error{"Unsaved changes"};
        session.new_scene();
        return text_result("untitled");
    }
    if (const std::string* name = arguments.text("rn")) {
        std::error_code ignored;
        session.scene().file_name = forward_slashes(std::filesystem::absolute(native_path(*name), ignored).string());
        if (!arguments.has("s")) return text_result(session.scene().file_name);
    }
    if (arguments.has("s")) return save(session);
    if (arguments.has("mf")) {
        session.scene().modified = arguments.truth("mf").value_or(true);
        return CommandResult();
    }
    const bool opens = arguments.has("o"), imports = arguments.has("i"), refers = arguments.has("r");
    const bool exports = arguments.has("es") || arguments.has("ea");
    if (!opens && !imports && !refers && !exports) return Error{"file needs a flag that says what to do"};
    if (arguments.count() != 1) return Error{"A file name is needed"};
    const std::string& path = arguments[0];
    if (exports) return export_scene(session, arguments, path);
    if (!opens) return import(session, arguments, path, refers);
    if (loses_changes(session, arguments)) return Error{"Unsaved changes"};
    return told(session.open_file(path), path);
}

constexpr CommandRow file_rows[] = {
    {"file",
     "o,open s,save new,newFile i,import r,reference rn,rename=s es,exportSelected ea,exportAll typ,type=s f,force "
     "ns,namespace=s pr,preserveReferences sn,sceneName shn,shortName exn,expandName ex,exists mf,modified=b l,list "
     "op,options=s iv,ignoreVersion ra,renameAll=b mnc,mergeNamespacesOnClash=b rpr,renamingPrefix=s "
     "lrd,loadReferenceDepth=s pmt,prompt=b rnn,returnNewNodes de,defaultExtensions=b ch,constructionHistory=b "
     "con,constraints=b exp,expressions=b sh,shader=b chn,channels=b gr,groupReference rfn,referenceNode=s",
     file},
};

} // namespace

std::span<const CommandRow> file_commands() {
    return file_rows;
}

} // namespace headless
