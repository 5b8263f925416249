// What the jobs that search news share: the searches for an item's words, in the order of
// services.ini, and the row that their counts become.
#pragma once

#include "collector/job.h"
#include "collector/news_search.h"

namespace guanchao {

class NewsJob : public Job {
public:
    // Raises OperationError where there is no service to ask.
    NewsJob(const Stores& stores, const RunOrder& order, const CollectorSettings& settings,
            const QList<Service>& search, const Clock& clock);

    QList<Service> services() const override;
    QString laiyuan(int way) const override { return search({way, {}}).laiyuan(); }
    std::optional<QString> nextRequest(const Item& item, const Asked& asked) const override;
    std::optional<Fault> faultOf(const Item& item, const Asked& before,
                                 const QByteArray& page) const override;

protected:
    virtual QString wordsOf(const Item& item) const = 0;
    // Tells of each item what the table of counts holds of it: a row of the run's day that
    // `condition` takes for whole, and how the last one before that was counted. `key` is the
    // table's column of items.
    void lookUp(QList<Item>& items, const QString& table, const QString& key,
                const QString& condition = {}) const;
    // The condition for counts over the run's own custom days.
    QString overTheseDays() const;

    FoundNews found(const Item& item, const Asked& asked) const;
    const NewsSearch& search(const Asked& asked) const {
        return *searches_[static_cast<size_t>(asked.way)];
    }

    const Stores& stores_;
    QString day_;  // date text
    int customDays_;
    double guanzhudu_;
    CountsWriter writer_;

private:
    std::vector<std::unique_ptr<NewsSearch>> searches_;
};

}  // namespace guanchao
