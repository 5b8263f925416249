// The addresses that the collector asks a search engine for, out of the search page pattern of the
// heat store: the very pages that the windows of the program open in a browser.
#pragma once

#include <QString>

#include "platform/service.h"

namespace guanchao {

class SearchAddress {
public:
    // `pattern` is a whole address with "tihuandm" for the encoded words. The host that `search`
    // names takes the place of the pattern's own. Raises OperationError for a pattern that is none.
    SearchAddress(const QString& pattern, const Service& search, int timeoutSeconds);

    const Service& service() const { return service_; }

    // The path with its query, limited by what stands for the period.
    QString path(const QString& words, const QString& period) const;

private:
    Service service_;
    QString pathPattern_;
};

}  // namespace guanchao
