// Writes what was counted into the heat store: one row an item and day, with its growth against the
// item's last earlier day if that was counted by the same kind of service; a count that is a lower
// bound has no growth. A second run on a day takes the place of the first. Each row is one short
// transaction on a connection of its own. Raises StoreError; then nothing of the row is written.
#pragma once

#include <QDate>
#include <QString>

#include "heat/news_notes.h"
#include "services/headlines_eastmoney.h"
#include "store/stores.h"

namespace guanchao {

struct NewsCounts {
    qint64 one = 0;
    qint64 all = 0;
    qint64 custom = 0;
    int customDays = 0;  // 0: no custom period, `custom` counts nothing
    NewsNote note = {};
};

struct FoundNews {
    NewsCounts counts;
    QString words;                   // that were searched for
    QList<Headline> headlines = {};  // behind the counts of days, the newest first
};

struct WordCounts {
    int zhangzi = 0;   // 涨
    int shengzi = 0;   // 升
    int dazhang = 0;   // 大涨
    int baozhang = 0;  // 暴涨
    int diezi = 0;     // 跌
    int jiangzi = 0;   // 降
    int dadie = 0;     // 大跌
    int baodie = 0;    // 暴跌
    double zongfen = 0;
};

class CountsWriter {
public:
    CountsWriter(const StoreFile& heat, QDate day);

    void writeTheme(const QString& zhutiname, const FoundNews& found) const;
    void writeCompany(const QString& dm, const QString& jc, const FoundNews& found) const;

    // The row of the day, and the latest counts in the list of commodities.
    // `laiyuan` as in NewsNote.
    void writeCommodity(const QString& shopname, const WordCounts& counts,
                        const QString& laiyuan) const;

private:
    QString newsValues(Connection& connection, const NewsRow& row, const QString& condition,
                       const NewsCounts& counts) const;
    void keepBeside(Connection& connection, const NewsRow& row, const FoundNews& found) const;
    QString onDay() const;
    QString lastBefore() const;

    const StoreFile& heat_;
    QString day_;   // date text
    QString riqi_;  // time text
};

}  // namespace guanchao
