#pragma once

/// The pictures that a scene's materials name, as far as they lie beside its file.
///
/// A name comes out of a file, maybe a stranger's, and the page may be mailed on: only what lies in the scene's folder
/// or below it is taken, by its relative name or by its bare name, and only what begins as a picture does.

#include "format/vor2.h"
#include "inspect/json_writer.h"
#include "viewer/page/word_block.h"

#include <map>
#include <string>
#include <vector>

namespace vor2::viewer {

class Pictures {
public:
    /// `scene_file` is the scene's name in the library's form.
    Pictures(const VOR2_LOADER::TEXT& scene_file, WordBlock& block) : scene_file_(scene_file), block_(block) {}

    /// The number of the picture that a material shows its colour by; -1 where it names none.
    int of_material(const VOR2_LOADER::VOR2_MATERIAL& material);
    /// The map of that picture, of a material that has maps.
    static const VOR2_LOADER::VOR2_BITMAP_MATERIAL_MAP* colour_map(const VOR2_LOADER::VOR2_MATERIAL& material);
    /// Whether the clear points of that picture are holes in the surface: where a map of its transparency is the same.
    static bool makes_clear(const VOR2_LOADER::VOR2_MATERIAL& material);
    void write_all(inspect::JsonWriter& json) const;
    /// A line for each that isn't in the page: its name and why.
    std::vector<std::string> missing() const;

private:
    struct Picture {
        std::string name, type, why_missing;
        WordSpan bytes;
    };
    int number_of(const VOR2_LOADER::TEXT& name);
    Picture load(const VOR2_LOADER::TEXT& name);

    VOR2_LOADER::TEXT scene_file_;
    WordBlock& block_;
    std::vector<Picture> pictures_;
    std::map<std::u16string, int> numbers_;
};

} // namespace vor2::viewer
