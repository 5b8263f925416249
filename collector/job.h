// One kind of collection: which items there are, which pages are to be asked for each, and what is
// written when the pages of an item suffice.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

#include "collector/page_source.h"

namespace guanchao {

struct Item {
    QString key;   // theme, code, commodity; of the code table the codes of a batch
    QString name;  // as the user is shown it
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

    virtual std::unique_ptr<PageSource> source(HttpClient& http) const = 0;

    // How many services there are for an item, each in place of the one before where that fails.
    virtual int ways() const { return 1; }

    // Of that source, for the page behind those that are there; nothing once they suffice.
    virtual std::optional<QString> nextRequest(const Item& item, const Asked& asked) const = 0;

    // Why the page is not what was asked for, in Chinese; empty if it is.
    virtual QString faultOf(const Item& item, const Asked& before,
                            const QByteArray& page) const = 0;

    // Raises StoreError; then nothing of the item is written, and the same may be tried again.
    virtual void write(const Item& item, const Asked& asked) = 0;
};

// The fault of a page without what is looked for.
inline const QString nothingFound = QStringLiteral("网页里没有要找的内容");

}  // namespace guanchao
