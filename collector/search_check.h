// The check of the site that counts the news: services/service_check.
#pragma once

#include "collector/collector_settings.h"
#include "services/service_check.h"

namespace guanchao {

// `pages` is the pattern of the search pages in the heat store. Raises OperationError for one that
// is none.
Check searchCheck(const Service& search, const QString& pages, const CollectorSettings& settings);

}  // namespace guanchao
