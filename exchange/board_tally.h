// What an import of boards came to.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace guanchao {

struct BoardTally {
    struct Failed {
        QString board;
        QString why;
    };

    int boards = 0;   // that are stored, also those of which nothing is new
    int themes = 0;   // that are new
    int members = 0;  // memberships that are new
    int strangers = 0;
    QList<Failed> failed;
    QStringList nameless;  // boards whose name no theme may have
    QString ending;        // why it ended before all was asked for; empty if it didn't
    bool stopped = false;  // by the user
    bool isShown = false;  // the main window shows what is new, whatever attention it asks for

    // Nothing was asked for: nothing was missing.
    bool isNothing() const;

    // For a window: what came, what didn't, why and what to do. `again` is what brings the boards
    // that have failed; without it they are those that are still ticked.
    QString words() const;
    QString words(const QString& again) const;
};

}  // namespace guanchao
