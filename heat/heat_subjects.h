// What the rankings of the internet figures are about.
#pragma once

#include "heat/heat_ranking.h"

namespace guanchao {

// By how much news there is about a theme or a company: tables xinwenshul and gongsixinwen, items
// by their growth, which is a signed number, 1000 where there was nothing to compare with.
HeatSubject themeNews();
HeatSubject companyNews();

// The prices of commodities by rising and falling words: tables shopname and shophq, items by their
// total.
HeatSubject commodityPrices();

}  // namespace guanchao
