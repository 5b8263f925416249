// What the day-history service has answered for since the program began, per code: its rows alone
// don't tell, since the oldest day of a download is not stored and a quiet day has none. The
// program owns one, which outlives the windows.
#pragma once

#include <QDate>
#include <QHash>
#include <QString>

namespace guanchao {

class AskedHistory {
public:
    bool reachesBackTo(const QString& dm, const QDate& first) const;
    // The day of the asking and the days behind it hold for that day only: their rows are to come.
    bool reachesTo(const QString& dm, const QDate& last, const QDate& today) const;

    // The first two are for a code with rows, the last for one without.
    void noteStart(const QString& dm, const QDate& first);
    void noteEnd(const QString& dm, const QDate& last, const QDate& today);
    void noteRange(const QString& dm, const QDate& first, const QDate& last, const QDate& today);

private:
    struct Asked {
        QDate first;
        QDate last;
        QDate on;  // the day of the asking for the last
    };

    QHash<QString, Asked> asked_;
};

}  // namespace guanchao
