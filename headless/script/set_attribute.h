#pragma once

#include "headless/graph/scene.h"
#include "headless/script/statement_reader.h"

namespace headless {

/// What lengths, angles and times in a text are counted in.
struct ValueUnits {
    double centimetres = 1.0;
    double radians = AngleUnit{}.radians;
    double per_second = 24.0;

    static ValueUnits of(const Scene& scene) {
        return {scene.linear_unit.centimetres, scene.angle_unit.radians, scene.time_unit.per_second};
    }
};

/// `setAttr` taken apart. Words behind the attribute's name are values, but for flags among them.
struct AttributeSetting {
    std::string_view name; ///< ".t", "node.t", "node.t[0:3]"
    std::string_view type; ///< of "-type"; empty without
    std::optional<bool> locked, keyable, channel_box;
    std::vector<Word> values;
};

/// Takes the words behind "setAttr" into `out`, whose storage is used again. Size hints and the flags that mean
/// nothing here are passed over. The error says which flag is unknown or lacks its value.
Result<void> parse_attribute_setting(std::span<const Word> words, AttributeSetting& out);

/// Applies the marks of a setting (locked, keyable, in the channel box) to the attribute, and a lock to what is in it.
void apply_marks(const Plug& plug, const AttributeSetting& setting);

using StoreValue = Result<void> (*)(const Plug& plug, const Value& value);

/// A range of elements in front of an array that each of them holds, as in ".wl[0:23].w".
struct ListRange {
    std::string path; ///< the first element of the first one's array: ".wl[0].w[0]"
    std::int64_t count = 0;
};

/// The range that a path names in this way, if it does.
std::optional<ListRange> list_range(std::string_view path);

/// Stores the values of a setting at the plug of its name, and of further elements where the name ends in a range,
/// each taking an equal share of the words. Words are read by what the attribute holds, in `units`; for an untyped
/// one, by the setting's type, and what isn't understood is kept as RawTokens with strings still in quotes.
/// With `lists`, what `list_range` makes of the name, the plug is that of its path: the array in each element takes how
/// many of its elements follow, and for each of these its index and its value.
/// An error says what was wrong with the words and leaves the elements before them set.
Result<void> store_values(const Plug& plug, const AttributeSetting& setting, const std::optional<ListRange>& lists,
                          const ValueUnits& units, StoreValue store);

std::optional<double> number_of(std::string_view word); ///< all of the word, finite or not; hexadecimal isn't one
std::optional<bool> truth_of(std::string_view word);    ///< on, off, yes, no, true, false, 1, 0

} // namespace headless
