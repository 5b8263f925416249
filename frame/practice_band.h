// The band of a window that tells of made-up prices, and hides where none are.
#pragma once

#include <QLabel>

#include "services/services.h"

namespace guanchao {

void showPractice(QLabel& band, const Services& services);

}  // namespace guanchao
