// What the day-history services have answered for since the program began, per code: its rows alone
// don't tell, since the oldest day of a download is not stored and a quiet day has none. The
// program owns one, which outlives the windows.
#pragma once

#include <QDate>
#include <QDateTime>
#include <QHash>
#include <QString>

namespace guanchao {

class AskedHistory {
public:
    bool reachesBackTo(const QString& dm, const QDate& first) const;
    // The day of the asking and the days behind it hold until its close, or the rest of that day:
    // their rows are to come.
    bool reachesTo(const QString& dm, const QDate& last, const QDateTime& now) const;

    // The first two are for a code with rows, the third for one without.
    void noteStart(const QString& dm, const QDate& first);
    void noteEnd(const QString& dm, const QDate& last, const QDateTime& now);
    void noteRange(const QString& dm, const QDate& first, const QDate& last, const QDateTime& now);

    // The rows that an answer has brought.
    void noteRows(const QString& dm, const QDate& oldest, const QDate& newest);
    // The rows that are there; no dates where there are none. Forgets the answers for a code whose
    // rows no longer reach as far as they did.
    void seeRows(const QString& dm, const QDate& oldest, const QDate& newest);

private:
    struct Asked {
        QDate first;
        QDate last;
        QDateTime on;  // of the asking for the last
        QDate oldest;  // row that was brought or seen
        QDate newest;
    };

    QHash<QString, Asked> asked_;
};

}  // namespace guanchao
