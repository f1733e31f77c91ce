#include "convert/gltf_writer.h"
#include "support/platform/native_path.h"
#include "tools/vor2/cli/foreign_file.h"
#include "tools/vor2/cli/jobs.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/cli/whole_file.h"
#include "tools/vor2/verbs/verb.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>

namespace tool {
namespace {

namespace fs = std::filesystem;
using namespace vor2::convert;
using VOR2_LOADER::VOR2;
using VOR2_LOADER::platform::native_path;

std::string stem_of(const std::string& name) {
    return native_path(name).stem().string();
}

/// Where a scene's texture may be: as it is named, beside the scene, or under its own name in either folder.
std::optional<std::vector<std::uint8_t>> find_texture(std::string name, const std::string& scene,
                                                      const std::string& folder) {
    for (char& c : name) c = c == '\\' ? '/' : c;
    const fs::path path = native_path(name), beside = native_path(scene).parent_path();
    std::vector<fs::path> places{beside / path, beside / path.filename()};
    if (!folder.empty())
        places.insert(places.begin(), {native_path(folder) / path, native_path(folder) / path.filename()});
    for (const fs::path& place : places) {
        std::error_code ignored;
        std::string why;
        if (!fs::is_regular_file(place, ignored)) continue;
        if (auto bytes = read_whole(place.string(), why)) return bytes;
    }
    return {};
}

/// A name that can be part of a file's.
std::string as_file_name(std::string name) {
    for (char& c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F || std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos) c = '_';
    }
    return name;
}

/// A scene, or each of a file's animations as one.
struct Loaded {
    std::vector<std::unique_ptr<VOR2>> scenes;
    std::vector<std::string> names; ///< of the animations
    std::vector<ImportedPicture> pictures;
    bool several = false; ///< animations in the file, of which none was asked for by name
};

class ConvertVerb final : public Verb {
public:
    std::string_view name() const override { return "convert"; }
    std::string_view summary() const override { return "convert scenes to glTF, and other formats to scenes"; }
    std::string_view description() const override {
        return "Between .vr2 and glTF 2.0 (.glb, or .gltf with its buffer beside it), both ways, and from FBX, Collada "
               "and the like where the tool was built with Assimp. The last name is the output; with --output-dir all "
               "are inputs. Nodes keep their names, hierarchy and keys, in metres, "
               "upright and facing as in the host; meshes, skins, targets, materials, lights, cameras and splines go "
               "along, and what glTF has no word for stands in its extras.\n\n"
               "A .vr2 holds one animation. Of a file with several, --animation takes one by its name, and "
               "--output-dir writes a file for each. With --merge several files of one skeleton become one glTF with "
               "an "
               "animation each, named as the files; the first gives the meshes. Joints that don't match are told.\n\n"
               "A texture is looked for beside the scene, and in --textures. One that isn't there stops a conversion "
               "to glTF, unless --leave-out-textures is given. Pictures within a glTF are written beside the .vr2.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 convert hero.vr2 hero.glb", "vor2 convert hero.fbx hero.vr2",
                "vor2 convert out/*.vr2 hero.glb --merge", "vor2 convert hero.glb run.vr2 --animation run",
                "vor2 convert shots/*.vr2 --output-dir web --to glb"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_files("FILE", "FILE", "the scenes, and last the file to write", files_);
        syntax.folder("-d,--output-dir", "DIR",
                      "write a file for each input into this folder; it is made where it isn't there", folder_);
        syntax.choice("--to", {"vr2", "glb", "gltf"},
                      "what --output-dir takes (default: glb for scenes, vr2 for all else)", to_);
        syntax.flag("--merge", "put all inputs into one glTF, as its animations", merge_);
        syntax.text("--animation", "NAME", "take this one of several animations", animation_);
        syntax.number("--influences", "N", "keep the N strongest joints of each vertex (default all)", influences_);
        syntax.choice("--anim-meshes", {"pose", "targets"},
                      "meshes that move vertex by vertex: as they stand at a time, or a target for each key",
                      anim_meshes_);
        syntax.number("--pose-time", "SECONDS", "that time (default: the start of the scene)", pose_time_);
        syntax.folder("--textures", "DIR", "where to look for textures first", textures_);
        syntax.flag("--leave-out-textures", "write the file without the textures that aren't there",
                    leave_out_textures_);
        syntax.jobs(jobs_);
    }
    std::string check() const override {
        if (influences_ && (!(*influences_ >= 1) || *influences_ != std::floor(*influences_)))
            return "--influences: a whole number above 0 is needed";
        if (merge_ && !folder_.empty()) return "--merge: writes one file, which --output-dir doesn't name";
        for (std::size_t i = 0; i + (folder_.empty() ? 1 : 0) < files_.size(); ++i) {
            const std::string extension = extension_of(files_[i]);
            if (extension != ".vr2" && !is_foreign(extension))
                return "'" + files_[i] + "' is nothing that can be converted: .vr2, " + foreign_extensions() + " are";
        }
        return folder_.empty() ? check_output() : check_names();
    }
    int run() override {
        make_output_folder(folder_);
        const auto convert_one = [this](std::size_t i) { return convert({files_[i]}, name_for(files_[i])); };
        if (!folder_.empty() && files_.size() == 1 && wants_process(extension_of(files_[0])))
            return run_apart(files_[0], "converting " + files_[0], [&] { return convert_one(0); });
        if (!folder_.empty()) return run_for_each(files_, jobs_, "converting", convert_one);
        const std::vector<std::string> inputs(files_.begin(), files_.end() - 1);
        const auto apart = std::find_if(inputs.begin(), inputs.end(),
                                        [](const std::string& input) { return wants_process(extension_of(input)); });
        if (apart == inputs.end()) return convert(inputs, files_.back());
        return run_apart(*apart, "converting " + *apart, [&] { return convert(inputs, files_.back()); });
    }

private:
    std::string check_output() const {
        if (files_.size() < 2) return "the file to write is missing";
        const std::string extension = extension_of(files_.back());
        if (extension != ".vr2" && !is_gltf(extension))
            return "'" + files_.back() + "' doesn't end in .vr2, .glb or .gltf";
        if (merge_ && !is_gltf(extension)) return "--merge: a .vr2 file holds one animation; name a .glb or .gltf file";
        if (files_.size() > 2 && !merge_) return "several files need --merge or --output-dir";
        return {};
    }
    std::string name_for(const std::string& input) const {
        const std::string to = !to_.empty() ? to_ : is_foreign(extension_of(input)) ? "vr2" : "glb";
        return (native_path(folder_) / native_path(input).stem()).string() + "." + to;
    }
    std::string check_names() const {
        std::map<std::string, std::string> inputs;
        for (const std::string& file : files_) {
            const auto [entry, is_new] = inputs.emplace(name_for(file), file);
            if (!is_new) return "'" + entry->second + "' and '" + file + "' would both be written to " + entry->first;
        }
        return {};
    }

    int convert(const std::vector<std::string>& inputs, const std::string& output) const {
        const Progress progress(inputs.size() == 1 && folder_.empty() ? "converting " + inputs[0] : std::string());
        Loaded loaded;
        for (const std::string& input : inputs) {
            if (!(is_foreign(extension_of(input)) ? load_foreign(input, output, loaded) : load_own(input, loaded)))
                return exit_refused;
        }
        return (is_gltf(extension_of(output)) ? save_gltf(loaded, inputs[0], output)
                                              : save_scenes(loaded, inputs[0], output))
                   ? exit_done
                   : exit_refused;
    }

    static bool load_own(const std::string& input, Loaded& out) {
        out.scenes.push_back(std::make_unique<VOR2>());
        out.names.push_back(stem_of(input));
        return load_scene(*out.scenes.back(), input);
    }

    bool load_foreign(const std::string& input, const std::string& output, Loaded& out) const {
        ImportedFile file;
        if (!read_foreign(input, stem_of(output), file)) return false;
        if (file.scene.source == stem_of(output))
            file.scene.source = "Converted from " + native_path(input).filename().string();
        std::vector<const ImportedAnimation*> wanted;
        for (const ImportedAnimation& animation : file.animations) {
            if (animation_.empty() || animation.name == animation_) wanted.push_back(&animation);
        }
        if (!animation_.empty() && wanted.empty()) {
            problem(input, "has no animation " + animation_ + listed(file));
            return false;
        }
        out.several = wanted.size() > 1;
        Report report;
        for (std::size_t i = 0; i < std::max<std::size_t>(wanted.size(), 1); ++i) {
            if (!wanted.empty()) set_animation(*wanted[i], file.scene);
            out.scenes.push_back(std::make_unique<VOR2>());
            Report ignored;
            build_scene(file.scene, *out.scenes.back(), i == 0 ? report : ignored);
            out.names.push_back(wanted.empty() ? stem_of(input) : wanted[i]->name);
        }
        for (ImportedPicture& picture : file.pictures) out.pictures.push_back(std::move(picture));
        return tell(input, report);
    }

    static std::string listed(const ImportedFile& file) {
        std::string text;
        for (const ImportedAnimation& animation : file.animations)
            text += (text.empty() ? ": it has " : ", ") + animation.name;
        return text.empty() ? ": it has none" : text;
    }

    bool save_gltf(const Loaded& loaded, const std::string& input, const std::string& output) const {
        std::vector<Take> takes;
        for (std::size_t i = 0; i < loaded.scenes.size(); ++i)
            takes.push_back({loaded.scenes[i].get(), loaded.names[i]});
        const fs::path buffer = native_path(output).replace_extension(".bin");
        GltfFile file;
        Report report = write_gltf(takes, options(loaded, input, output, buffer.filename().string()), file);
        if (report.lacks_texture)
            report.problem += "; --textures says where textures are, --leave-out-textures goes on without them";
        if (!tell(input, report)) return false;
        OutputSet outputs(output);
        if (!outputs.ready() || !write_whole(output, file.bytes)) return false;
        return (file.buffer.empty() || write_whole(buffer.string(), file.buffer)) && outputs.commit();
    }

    /// A file for the scene or, in a folder, for each of several animations.
    bool save_scenes(const Loaded& loaded, const std::string& input, const std::string& output) const {
        if (!loaded.several) return save_one(loaded, 0, output);
        if (folder_.empty()) {
            std::string names;
            for (const std::string& name : loaded.names) names += (names.empty() ? "" : ", ") + name;
            problem(input, "has several animations: " + names +
                               "; --animation takes one, --output-dir writes a file for each");
            return false;
        }
        std::map<std::string, int> used;
        for (std::size_t i = 0; i < loaded.scenes.size(); ++i) {
            std::string name = stem_of(output) + "_" + as_file_name(loaded.names[i]);
            const int before = used[name]++;
            if (before > 0) name += "_" + std::to_string(before);
            if (!save_one(loaded, i, (native_path(folder_) / native_path(name)).string() + ".vr2")) return false;
        }
        return true;
    }

    static bool save_one(const Loaded& loaded, std::size_t index, const std::string& output) {
        OutputSet outputs(output);
        if (!outputs.ready() || !write_scene(*loaded.scenes[index], output)) return false;
        const fs::path folder = native_path(output).parent_path();
        for (const ImportedPicture& picture : loaded.pictures) {
            const std::string_view bytes(reinterpret_cast<const char*>(picture.bytes.data()), picture.bytes.size());
            if (!write_whole((folder / native_path(picture.name)).string(), bytes)) return false;
        }
        return outputs.commit();
    }

    GltfOptions options(const Loaded& loaded, const std::string& input, const std::string& output,
                        const std::string& buffer) const {
        GltfOptions out;
        out.binary = extension_of(output) == ".glb";
        out.buffer_name = buffer;
        out.most_influences = influences_ ? static_cast<std::size_t>(*influences_) : 0;
        out.anim_meshes_as_targets = anim_meshes_ == "targets";
        if (pose_time_) out.pose_time = static_cast<float>(*pose_time_);
        out.texture = [this, input, &loaded](const std::string& name) -> std::optional<std::vector<std::uint8_t>> {
            for (const ImportedPicture& picture : loaded.pictures) {
                if (picture.name == name) return picture.bytes;
            }
            return find_texture(name, input, textures_);
        };
        out.leave_out_textures = leave_out_textures_;
        return out;
    }

    std::vector<std::string> files_;
    std::string folder_, to_, anim_meshes_, textures_, animation_;
    std::optional<double> influences_, pose_time_;
    bool merge_ = false, leave_out_textures_ = false;
    unsigned jobs_ = 0;
};

} // namespace

std::unique_ptr<Verb> make_convert_verb() {
    return std::make_unique<ConvertVerb>();
}

} // namespace tool
