// One kind of collection: which items there are, which pages are to be asked for each, and what is
// written when all pages of an item are there.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

#include "collector/page_source.h"

namespace guanchao {

struct Item {
    QString key;   // theme, code, commodity; of the code table the codes of a batch
    QString name;  // as the user is shown it
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

    // Of that source, one a page.
    virtual QStringList requests(const Item& item) const = 0;

    // False for a page that is not what was asked for.
    virtual bool answers(const Item& item, const QByteArray& page) const = 0;

    // The pages stand in the order of the requests. Raises StoreError; then nothing of the item is
    // written, and the same may be tried again.
    virtual void write(const Item& item, const QList<QByteArray>& pages) = 0;
};

}  // namespace guanchao
