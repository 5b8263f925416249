// What a fill of the history databases came to.
#pragma once

#include <QDate>
#include <QMap>
#include <QString>
#include <QStringList>

namespace guanchao {

struct FillTally {
    QDate newestDay;             // of the market
    int rows = 0;                // new days
    int codes = 0;               // that have been asked for, or have got their day from the quotes
    int refactored = 0;          // of which the days have got their factors
    int unknown = 0;             // of which the services have no days
    QStringList lacking;         // codes that are left for another time
    QMap<QString, int> reasons;  // why, and of how many
    QString ending;              // why it ended before all was asked; empty if it didn't
    bool stopped = false;        // by the user

    void lack(const QString& dm, const QString& reason);

    // For the log.
    QString counts() const;
    // For the window: what came, what didn't, why and what to do.
    QString words() const;
};

}  // namespace guanchao
