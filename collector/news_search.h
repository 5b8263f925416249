// One way to search the news of a name: to count them over the last day, without a limit, and over
// the custom days where these are on, and to read what the first page without a limit says.
#pragma once

#include <QByteArray>
#include <QList>
#include <memory>
#include <optional>

#include "collector/collector_settings.h"
#include "collector/counts_writer.h"
#include "collector/fault.h"
#include "heat/collector_contract.h"
#include "platform/clock.h"
#include "platform/service.h"

namespace guanchao {

class NewsSearch {
public:
    virtual ~NewsSearch() = default;

    virtual const Service& service() const = 0;

    // As in NewsNote.
    virtual QString laiyuan() const = 0;

    // The path for the page behind these; nothing once they suffice.
    virtual std::optional<QString> nextPath(const QString& words,
                                            const QList<QByteArray>& pages) const = 0;

    // Why the page behind so many others is not what was asked for; nothing if it is.
    virtual std::optional<Fault> faultOf(const QString& words, qsizetype before,
                                         const QByteArray& page) const = 0;

    // Of pages that suffice.
    virtual FoundNews find(const QString& words, const QList<QByteArray>& pages) const = 0;

    // The first page without a limit in time, which faultOf judges too, and its text.
    virtual QString firstPath(const QString& words) const = 0;
    virtual QString textOf(const QString& words, const QByteArray& page) const = 0;
};

// By the kind of the service. Raises OperationError for a search page pattern that is none, where
// the service needs one.
std::unique_ptr<NewsSearch> newsSearch(const RunOrder& order, const CollectorSettings& settings,
                                       const Service& service, const Clock& clock);

}  // namespace guanchao
