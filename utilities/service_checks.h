// What the services are asked to see whether they answer: each reply is read by the classes by
// which the program itself reads it.
#pragma once

#include "services/service_check.h"
#include "services/services.h"

namespace guanchao {

QList<Check> serviceChecks(const Services& services);

}  // namespace guanchao
