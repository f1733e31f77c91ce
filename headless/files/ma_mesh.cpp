// The long lists of meshes, in ranges as files have them.
#include "headless/files/ma_values.h"
#include "headless/geometry/mesh_data.h"

namespace headless {
namespace {

class MeshWriter {
public:
    MeshWriter(MaText& out, const MeshData& data) : out_(out), data_(data) {}

    void write() {
        for (const auto& [set, list] : data_.uvs()) numbers(".uvst[" + std::to_string(set) + "].uvsp", "float2", list);
        for (const auto& [set, list] : data_.colours()) numbers(".clst[" + std::to_string(set) + "].clsp", "", list);
        triples(".pt", "float3", AttributeKind::distance, data_.tweaks());
        triples(".vt", "", AttributeKind::distance, data_.points());
        triples(".ed", "", AttributeKind::number, data_.edges());
        triples(".n", "float3", AttributeKind::number, data_.normals());
        runs(".fc", "polyFaces", data_.face_indices(), [this](int index) {
            const RawTokens words = data_.face_words(index);
            for (const std::string& token : words.tokens) out_.gap().text(token);
        });
    }

private:
    template<typename Write>
    void runs(const std::string& path, const char* type, const std::vector<int>& indices, Write&& write) {
        for (std::size_t i = 0; i < indices.size();) {
            std::size_t end = i + 1;
            while (end < indices.size() && end - i < longest_run && indices[end] == indices[end - 1] + 1) ++end;
            out_.text("\tsetAttr");
            if (indices.size() > 1) out_.text(" -s ").integer(static_cast<std::int64_t>(indices.size()));
            out_.text(" \"").text(path).text("[").integer(indices[i]);
            if (end - i > 1) out_.text(":").integer(indices[end - 1]);
            out_.text("]\"");
            if (*type) out_.text(" -type ").quoted(type);
            for (; i < end; ++i) write(indices[i]);
            out_.end_statement();
        }
    }

    void triples(const char* path, const char* type, AttributeKind kind, const ElementList<Vector3>& list) {
        runs(path, type, list.indices(), [&](int index) {
            const Vector3& value = *list.find(index);
            for (int i = 0; i < 3; ++i) out_.gap().number(value[i], kind);
        });
    }

    template<typename T>
    void numbers(const std::string& path, const char* type, const ElementList<T>& list) {
        runs(path, type, list.indices(), [&](int index) {
            for (const double number : *list.find(index)) out_.gap().number(number);
        });
    }

    MaText& out_;
    const MeshData& data_;
};

} // namespace

Result<void> write_mesh(MaText& out, const Node& node) {
    const MeshData* data = MeshData::of(node);
    if (!data) return {};
    MeshWriter(out, *data).write();
    if (out.met_no_number()) return Error{"'" + node.name() + "' holds a number that isn't finite and can't be saved"};
    return {};
}

} // namespace headless
