#pragma once

#include "headless/animation/curve_node.h"
#include "headless/graph/scene.h"

namespace headless {

/// Keying plugs, as scripts and readers do. Times are seconds; values are centimetres, radians, seconds or plain, as
/// the plug's kind has it. A plug is keyed through the curve that reaches it by plain connections (straight, or through
/// a character); one driven by anything else, also by a driven curve, isn't keyed. The keys of a curve that an
/// operation touches are put in order first (see `AnimCurve`).
///
/// A curve made here is an animCurveTL, TA or TT by the plug's kind, TU for plain numbers, named
/// "NODE_attribute" without namespaces, with auto tangents; for switches and choices (booleans, enumerations, whole
/// numbers) the value is held from key to key.

/// Times closer than this are one key's, in seconds. A sixth of what the clock of scene files resolves.
inline constexpr double same_key_time = 1.0 / 36000.0;

/// The curve over time that drives a plug (not a compound) by plain connections; null when none does.
Node* curve_of(const Plug& plug);
/// The curve that keys a plug, made and connected if need be. Refused for a locked plug, one driven by something
/// else, a whole array, and what holds no number.
Result<Node*> curve_for_keying(Scene& scene, const Plug& plug);

/// Keys plugs at a time with their present values, as evaluated at the scene's clock; a compound's children each.
/// A key there gets the value and keeps its tangents. All or nothing: a plug that can't be keyed is an error and no
/// plug gets a key. Plugs that are keyed together share the table of their times.
Result<void> key_plugs(Scene& scene, std::span<const Plug> plugs, double time);
inline Result<void> key_plug(Scene& scene, const Plug& plug, double time) {
    return key_plugs(scene, {&plug, 1}, time);
}
/// Keys one plug with a value of the caller's.
Result<void> key_plug_with(Scene& scene, const Plug& plug, double time, double value);

/// Gives the key of a plug at a time other types of tangents; a side without a type keeps what it has.
void set_key_tangents(const Plug& plug, double time, std::optional<Tangent> in, std::optional<Tangent> out);

/// Gives a plug all its keys at once, in place of those it has. Pass copies of one `KeyTimes` for plugs with the same
/// times: they share its table. Times out of order, equal or not finite are put in order as evaluation has them.
Result<Node*> set_keys(Scene& scene, const Plug& plug, const KeyTimes& times, std::vector<double> values,
                       Tangent tangent = Tangent::automatic);
/// The same for the keys of a curve node; nothing happens to a node that is no curve.
void set_keys(Node& curve, const KeyTimes& times, std::vector<double> values, Tangent tangent = Tangent::automatic);

/// Removes a plug's keys from `first` to `last`, both included; how many went. A curve that loses its last key goes
/// too, and leaves its plugs the value they had.
std::size_t cut_keys(Scene& scene, const Plug& plug, double first, double last);

/// A plug's keys in order of time (count: `keys->size()`, `times()`, `values()`); null when no curve drives it.
const AnimCurve* keys_of(const Plug& plug);
/// The plugs of a node, compounds' children each, that a curve drives by plain connections, in order of attributes.
std::vector<Plug> keyed_plugs(Node& node);

} // namespace headless
