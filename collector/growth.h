// 增长: how a count or a score has grown since the last day that was collected.
#pragma once

#include <optional>

namespace guanchao {

// Stands for a growth that has no base to compare with.
inline constexpr double noGrowth = 1000;

// In percent of the former value, two decimals; noGrowth where there is no former value or it is 0.
// A growth that comes to the very sentinel is told one hundredth less.
double growth(double value, std::optional<double> former);

}  // namespace guanchao
