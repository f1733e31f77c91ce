#pragma once

/// Numbers out of a glTF file that nobody has checked.

#include "convert/gltf/tiny_gltf.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace vor2::convert {

/// What is wrong with a file, in a sentence for its user.
class BadFile : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The element of a list that an index from a file names; a `BadFile` where it names none.
template<class LIST>
const auto& element(const LIST& list, int index, const char* what) {
    if (index < 0 || static_cast<std::size_t>(index) >= list.size())
        throw BadFile(std::string(what) + " " + std::to_string(index) + " isn't there: there are " +
                      std::to_string(list.size()));
    return list[static_cast<std::size_t>(index)];
}

class GltfAccessors {
public:
    /// `budget` is how many bytes may be read in all, however often the file's views are named.
    GltfAccessors(const tinygltf::Model& model, double budget) : model_(model), budget_(budget) {}

    /// As floats, integers brought to 0 to 1 or -1 to 1 where they are marked so. A `BadFile` unless there are `width`
    /// numbers an element.
    std::vector<float> floats(int accessor, int width);
    /// Unsigned integers.
    std::vector<std::uint32_t> integers(int accessor, int width);
    [[nodiscard]] std::size_t count(int accessor) const {
        return element(model_.accessors, accessor, "accessor").count;
    }
    /// Numbers an element; 0 for a type that glTF doesn't have.
    [[nodiscard]] int width(int accessor) const;
    void spend(double bytes);

private:
    /// Where elements of `size` bytes lie, `stride` apart, all within the file.
    struct Place {
        const std::uint8_t* first;
        std::size_t stride;
    };
    Place place(int view, std::size_t offset, std::size_t count, std::size_t size, const char* what);
    template<class NUMBER, class READ>
    std::vector<NUMBER> numbers(int index, int width, READ read);
    template<class NUMBER, class READ>
    void apply_sparse(const tinygltf::Accessor& accessor, int width, READ read, std::vector<NUMBER>& out);

    const tinygltf::Model& model_;
    double budget_;
};

} // namespace vor2::convert
