// The searches that count the news of one name: over the last day, without a limit, and over the
// custom days where these are on.
#pragma once

#include <QByteArray>
#include <QList>

#include "collector/collector_settings.h"
#include "collector/counts_writer.h"
#include "collector/search_address.h"
#include "heat/collector_contract.h"

namespace guanchao {

class NewsSearch {
public:
    // Raises OperationError for a search page pattern that is none.
    NewsSearch(const RunOrder& order, const CollectorSettings& settings, const Service& search);

    const Service& service() const { return address_.service(); }
    QStringList paths(const QString& words) const;
    bool answers(const QByteArray& page) const;
    // Of pages that answer.
    NewsCounts counts(const QList<QByteArray>& pages) const;

private:
    const CollectorSettings& settings_;
    int customDays_;
    SearchAddress address_;
};

}  // namespace guanchao
