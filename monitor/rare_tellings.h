// Failures that come again with every poll are not told one a second: each reason at first, and
// then, while it lasts, every ten minutes. A user who has missed it learns by the next that no
// alarms come.
#pragma once

#include <QDateTime>
#include <QHash>
#include <QString>
#include <QStringList>

namespace guanchao {

class RareTellings {
public:
    // Whether the reason is to be told at the moment `now`, and notes that it is.
    bool isDue(const QString& reason, const QDateTime& now);
    QStringList dueOf(const QStringList& reasons, const QDateTime& now);
    // The other reasons are over: each is told at once if it comes again.
    void keepOnly(const QStringList& reasons);

private:
    QHash<QString, QDateTime> toldAt_;  // by reason
};

}  // namespace guanchao
