// Random legacy shows that survive the conversion up and down.

#pragma once

#include <random>

#include "format_converter/version0/containers/show_data.h"

namespace zuna_test {

/// A random legacy show that holds only what conversion keeps: track ids from the pool in ascending order, at
/// most one drum track, delta times that follow from the absolute ones, tempos at the beginning of their
/// meters with whole clicks a minute, labels of at most 7 bytes. Such a show comes back from the current
/// model byte for byte.
version0::ShowData RandomLegacyShow(std::mt19937& random);

}  // namespace zuna_test
