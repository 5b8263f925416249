// What Form34 shows of each service: the words of its row.
#pragma once

#include <QHash>
#include <QSet>
#include <QStringList>

#include "services/check_run.h"
#include "services/service_entries.h"
#include "services/service_watch.h"

namespace guanchao {

// 10:02:03（3 秒前）; empty for no time.
QString ageWords(const QDateTime& when, const QDateTime& now);

// The last failure with its reason; empty if there was none.
QString failureLine(const ServiceWatch::State& state, const QDateTime& now);

// By this a service is known, wherever it stands in the order.
QString serviceKey(const ServiceEntry& entry);

// What came of the checks of each service, until they are carried out again.
class CheckWords {
public:
    // Each row is of the entries that it is about.
    void add(const QList<ServiceEntry>& entries, const CheckRow& row);

    QString of(const ServiceEntry& entry) const;
    // Some check of the service has failed.
    bool hasFailed(const ServiceEntry& entry) const { return failed_.contains(serviceKey(entry)); }
    // 通 19，不通 1.
    QString sum() const;

private:
    QHash<QString, QStringList> words_;
    QSet<QString> failed_;
    int answers_ = 0;
    int failures_ = 0;
};

// Those that the check is about: by kind and host where there may be several.
QList<ServiceEntry> entriesOf(const QList<ServiceEntry>& entries, const Check& check,
                              const Service& service);

}  // namespace guanchao
