#include "collector/growth.h"

#include <cmath>

#include "base/values.h"
#include "heat/collector_contract.h"

namespace guanchao {

double growth(double value, std::optional<double> former) {
    if (!former || *former == 0) {
        return noGrowth;
    }
    const double percent = roundTo(100 * (value - *former) / std::abs(*former), 2);
    return percent == noGrowth ? noGrowth - 0.01 : percent;
}

}  // namespace guanchao
