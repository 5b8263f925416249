// Both history databases as other programs make them, at random: prices as numbers and as texts,
// columns of every kind, what is missing, days that stand there twice, gaps, times of many forms,
// and themes that stand there twice, have an apostrophe or no name.
#pragma once

#include "store/stores.h"

namespace guanchao {

// In place of what is there; the same for the same seed. With the indexes of the statements.
void writeRandomHistory(unsigned seed, const StoreFile& first, const StoreFile& second);

}  // namespace guanchao
