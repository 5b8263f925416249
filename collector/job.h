// One kind of collection: which items there are, which pages are to be asked for each, and what is
// written when the pages of an item suffice.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

#include "collector/fault.h"
#include "platform/service.h"

namespace guanchao {

struct Item {
    QString key;                          // theme, code, commodity; of the code table a batch
    QString name;                         // as the user is shown it
    bool isDone = false;                  // it has its row of the run's day
    std::optional<QString> laiyuan = {};  // 来源 of its row before that, as in NewsNote
};

// What has been asked for an item.
struct Asked {
    int way = 0;              // which of the job's services, the first being 0
    QList<QByteArray> pages;  // in the order of the requests
};

class Job {
public:
    virtual ~Job() = default;

    virtual QString title() const = 0;

    // In the order of the work. Raises StoreError.
    virtual QList<Item> items() const = 0;

    // False for a job that the user starts without the main program: its end doesn't end the run.
    virtual bool endsWithMainProgram() const { return true; }

    // Each of which can be asked for any item.
    virtual QList<Service> services() const = 0;
    // 来源 of what that service counts, as in NewsNote.
    virtual QString laiyuan(int /*way*/) const { return {}; }

    // The path at that service for the page behind those that are there; nothing once they suffice.
    virtual std::optional<QString> nextRequest(const Item& item, const Asked& asked) const = 0;

    // Why the page is not what was asked for; nothing if it is.
    virtual std::optional<Fault> faultOf(const Item& item, const Asked& before,
                                         const QByteArray& page) const = 0;

    // Raises StoreError; then nothing of the item is written, and the same may be tried again.
    // Raises OperationError for an item that is not wanted any more.
    virtual void write(const Item& item, const Asked& asked) = 0;
};

// The fault of a page without what is looked for.
inline const QString nothingFound = QStringLiteral("网页里没有要找的内容");

}  // namespace guanchao
