#pragma once

#include "headless/script/set_attribute.h"

namespace headless {

/// `addAttr` taken apart: the attribute, and the words that are no flags (names of nodes).
struct AttributeAddition {
    Attribute attribute;
    std::string parent; ///< the compound it goes into; empty for none
    std::optional<bool> keyable;
    std::vector<Word> nodes;
};

/// Takes the words behind "addAttr". Flags that only guide the user interface are passed over. A default value is
/// read in `units`. Refused: an unknown flag, a flag without its argument, an attribute without a name, a
/// default value that is no finite number.
Result<AttributeAddition> parse_attribute_addition(std::span<const Word> words, const ValueUnits& units);

/// Adds it to a node. Refused when the name is taken by an attribute of another sort or the parent is missing.
Result<void> add_attribute(Node& node, const AttributeAddition& addition);

} // namespace headless
