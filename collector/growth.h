// 增长: how a count or a score has grown since the last day that was collected.
#pragma once

#include <optional>

namespace guanchao {

// In percent of the former value, two decimals; heat/collector_contract's noGrowth where there is
// no former value or it is 0. A growth that comes to the very sentinel is told one hundredth less.
double growth(double value, std::optional<double> former);

}  // namespace guanchao
