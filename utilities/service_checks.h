// What the services are asked to see whether they answer: each reply is read by the classes by
// which the program itself reads it.
#pragma once

#include <chrono>

#include "services/service_check.h"
#include "services/services.h"

namespace guanchao {

QList<Check> serviceChecks(const Services& services);

// Between two of them, beside the pauses that the services ask for.
inline constexpr std::chrono::milliseconds betweenChecks(200);

}  // namespace guanchao
