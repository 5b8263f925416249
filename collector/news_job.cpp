#include "collector/news_job.h"

#include <QSet>

#include "base/activity.h"
#include "base/values.h"
#include "heat/news_notes.h"
#include "services/service_names.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

NewsJob::NewsJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
                 const QList<Service>& search, const Clock& clock)
    : stores_(stores),
      day_(dateText(order.day)),
      customDays_(order.customDays),
      guanzhudu_(order.guanzhudu),
      writer_(stores.heat, order.day) {
    for (const Service& service : search) {
        searches_.push_back(newsSearch(order, settings, service, clock));
    }
    if (searches_.empty()) {
        throw OperationError(allOffWords(u"search"_s));
    }
}

QList<Service> NewsJob::services() const {
    QList<Service> services;
    for (const auto& it : searches_) {
        services << it->service();
    }
    return services;
}

void NewsJob::lookUp(QList<Item>& items, const QString& table, const QString& key,
                     const QString& condition) const {
    Connection heat = stores_.heat.open();
    const QString from = u" from "_s + table + u" where date(riqi)"_s;
    QSet<QString> done;
    for (Recordset row(heat, u"select "_s + key + from + u'=' + quoted(day_) + condition);
         !row.atEnd(); row.moveNext()) {
        done << row.value(0).toText();
    }
    const NewsNotes notes = readNewsNotes(heat, table, u" and riqi<"_s + quoted(day_));
    QHash<QString, QString> laiyuan;
    for (Recordset row(heat, u"select "_s + key + u",max(date(riqi))"_s + from + u'<' +
                                 quoted(day_) + u" group by "_s + key);
         !row.atEnd(); row.moveNext()) {
        const QString item = row.value(0).toText();
        laiyuan[item] = notes.value({row.value(1).toText(), item}).laiyuan;
    }
    for (Item& it : items) {
        it.isDone = done.contains(it.key);
        if (laiyuan.contains(it.key)) {
            it.laiyuan = laiyuan[it.key];
        }
    }
}

QString NewsJob::overTheseDays() const {
    return u" and zdytianshu="_s + QString::number(customDays_);
}

std::optional<QString> NewsJob::nextRequest(const Item& item, const Asked& asked) const {
    return search(asked).nextPath(wordsOf(item), asked.pages);
}

std::optional<Fault> NewsJob::faultOf(const Item& item, const Asked& before,
                                      const QByteArray& page) const {
    return search(before).faultOf(wordsOf(item), before.pages.size(), page);
}

FoundNews NewsJob::found(const Item& item, const Asked& asked) const {
    return search(asked).find(wordsOf(item), asked.pages);
}

}  // namespace guanchao
