#pragma once

#include <optional>
#include <string>

namespace zuna_core {

/// The shortest decimal text that ParseFloat() reads as this finite float, in the form of a JSON number.
/// Minus zero is "-0.0", which other programs take for a float, not for the integer 0.
std::string FloatText(float value);

/// The float nearest to the number that a JSON text spells, halves to even; it is rounded once, from the
/// decimal digits. None where the number lies beyond the floats.
std::optional<float> ParseFloat(const std::string& number);

}  // namespace zuna_core
