#include "convert/gltf_writer.h"
#include "support/platform/native_path.h"
#include "tools/vor2/cli/jobs.h"
#include "tools/vor2/cli/messages.h"
#include "tools/vor2/cli/output_set.h"
#include "tools/vor2/cli/progress.h"
#include "tools/vor2/cli/scene_file.h"
#include "tools/vor2/cli/whole_file.h"
#include "tools/vor2/verbs/verb.h"

#include <cmath>
#include <filesystem>
#include <map>

namespace tool {
namespace {

namespace fs = std::filesystem;
using namespace vor2::convert;
using VOR2_LOADER::platform::native_path;

std::string extension_of(const std::string& name) {
    std::string ending = native_path(name).extension().string();
    for (char& c : ending) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return ending;
}

bool is_gltf(const std::string& extension) {
    return extension == ".glb" || extension == ".gltf";
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

class ConvertVerb final : public Verb {
public:
    std::string_view name() const override { return "convert"; }
    std::string_view summary() const override { return "convert scenes to glTF"; }
    std::string_view description() const override {
        return "Writes a scene as glTF 2.0: a .glb file, or a .gltf file with its buffer beside it. The last name is "
               "the "
               "output; with --output-dir all are inputs. Nodes keep their names, hierarchy and keys, in metres, "
               "upright and facing as in the host; meshes, skins, targets, materials, lights, cameras and splines go "
               "along, and what glTF has no word for stands in its extras.\n\n"
               "With --merge several files of one skeleton become one glTF with an animation each, named as the files; "
               "the first gives the meshes. Joints that don't match are told.\n\n"
               "A texture is looked for beside the scene, and in --textures. One that isn't there stops the "
               "conversion, unless --leave-out-textures is given.";
    }
    std::vector<std::string> examples() const override {
        return {"vor2 convert hero.vr2 hero.glb", "vor2 convert out/*.vr2 hero.glb --merge",
                "vor2 convert shots/*.vr2 --output-dir web --to glb"};
    }
    void describe(Syntax& syntax) override {
        syntax.required_files("FILE", "FILE", "the scenes, and last the file to write", files_);
        syntax.folder("-d,--output-dir", "DIR", "write a file for each input into this folder", folder_);
        syntax.choice("--to", {"glb", "gltf"}, "what --output-dir takes (default glb)", to_);
        syntax.flag("--merge", "put all inputs into one glTF, as its animations", merge_);
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
        if (!folder_.empty()) return check_names();
        if (files_.size() < 2) return "the file to write is missing";
        if (!is_gltf(extension_of(files_.back()))) return "'" + files_.back() + "' doesn't end in .glb or .gltf";
        if (files_.size() > 2 && !merge_) return "several files need --merge or --output-dir";
        return {};
    }
    int run() override {
        if (!folder_.empty())
            return run_for_each(files_, jobs_, "converting",
                                [this](std::size_t i) { return convert({files_[i]}, name_for(files_[i])); });
        return convert({files_.begin(), files_.end() - 1}, files_.back());
    }

private:
    std::string name_for(const std::string& input) const {
        return (native_path(folder_) / native_path(input).stem()).string() + "." + (to_.empty() ? "glb" : to_);
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
        std::vector<VOR2_LOADER::VOR2> scenes(inputs.size());
        std::vector<Take> takes;
        for (std::size_t i = 0; i < inputs.size(); ++i) {
            if (!load_scene(scenes[i], inputs[i])) return exit_refused;
            takes.push_back({&scenes[i], native_path(inputs[i]).stem().string()});
        }
        const fs::path buffer = native_path(output).replace_extension(".bin");
        GltfFile file;
        const Report report = write_gltf(takes, options(inputs[0], output, buffer.filename().string()), file);
        for (const std::string& text : report.notes) note(inputs[0] + ": " + text);
        if (!report.good()) {
            problem(inputs[0], report.problem);
            return exit_refused;
        }
        OutputSet outputs(output);
        if (!outputs.ready() || !write_whole(output, file.bytes)) return exit_refused;
        if (!file.buffer.empty() && !write_whole(buffer.string(), file.buffer)) return exit_refused;
        return outputs.commit() ? exit_done : exit_refused;
    }

    GltfOptions options(const std::string& input, const std::string& output, const std::string& buffer) const {
        GltfOptions out;
        out.binary = extension_of(output) == ".glb";
        out.buffer_name = buffer;
        out.most_influences = influences_ ? static_cast<std::size_t>(*influences_) : 0;
        out.anim_meshes_as_targets = anim_meshes_ == "targets";
        if (pose_time_) out.pose_time = static_cast<float>(*pose_time_);
        out.texture = [this, input](const std::string& name) { return find_texture(name, input, textures_); };
        out.leave_out_textures = leave_out_textures_;
        return out;
    }

    std::vector<std::string> files_;
    std::string folder_, to_, anim_meshes_, textures_;
    std::optional<double> influences_, pose_time_;
    bool merge_ = false, leave_out_textures_ = false;
    unsigned jobs_ = 0;
};

} // namespace

std::unique_ptr<Verb> make_convert_verb() {
    return std::make_unique<ConvertVerb>();
}

} // namespace tool
