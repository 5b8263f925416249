// The check, as of services/service_check, of the sites that count the news.
#pragma once

#include "collector/collector_settings.h"
#include "platform/clock.h"
#include "services/service_check.h"
#include "services/services.h"

namespace guanchao {

// `pages` is the pattern of the search pages in the heat store: a page is asked where it leads,
// unless services.ini names a host. Raises OperationError for one that is none.
Check searchCheck(const Services& services, const QString& pages, const CollectorSettings& settings,
                  const Clock& clock);

}  // namespace guanchao
