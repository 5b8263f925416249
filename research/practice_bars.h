// History databases of made-up days. They belong to a practice folder; `./run` once put them where
// the program of a live folder looks for the real ones.
#pragma once

#include <QString>

#include "store/stores.h"

namespace guanchao {

// By this the made-up days are known: their index has an adjustment factor, which no real one has.
inline constexpr double practiceIndexFactor = 1.11;

// Moves those that a folder without history databases of its own would take for real ones aside,
// beside their place, and returns words that tell it; empty if there are none. Raises
// OperationError where one can't be moved.
QString movePracticeBarsAside(const Stores& stores);

}  // namespace guanchao
