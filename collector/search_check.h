// The check, as of services/service_check, of the sites that count the news.
#pragma once

#include "platform/clock.h"
#include "services/service_check.h"
#include "services/services.h"
#include "store/stores.h"

namespace guanchao {

// A page is asked where the pattern of the heat store leads, unless services.ini names a host.
// Raises OperationError for a pattern that is none, and what reading the store and caijiqi.ini of
// the application folder raises.
Check searchCheck(const Services& services, const StoreFile& heat, const QString& applicationFolder,
                  const Clock& clock);

}  // namespace guanchao
