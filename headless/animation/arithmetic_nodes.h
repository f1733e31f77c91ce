#pragma once

namespace headless {

/// Makes the nodes of sums, products and units evaluated.
///
/// - unitConversion: the input times `conversionFactor`; timeToUnitConversion and unitToTimeConversion likewise, with
///   times counted in ticks of 1/6000 second, as the factors in files have it.
/// - addDoubleLinear, multDoubleLinear: sum and product of two inputs.
/// - multiplyDivide, by axis: `operation` 0 passes the first input on, 1 multiplies, 2 divides, 3 raises to a power.
/// What
///   has no finite result is 0.
/// - plusMinusAverage, by width: 0 passes the first element on, 1 sums, 2 takes the others from the first, 3 averages.
/// - blendWeighted: the sum of inputs, each times its weight; one without a weight counts once.
void register_arithmetic_nodes();

} // namespace headless
