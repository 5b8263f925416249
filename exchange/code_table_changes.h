// What a list of all stocks (代码表) changes in the code table dmb: new codes enter with the
// initials of their names, changed names are corrected, what is no longer listed is marked (退市)
// and never deleted. Failed statements raise StoreError.
#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include "formats/initials.h"
#include "services/node_list.h"
#include "store/stores.h"

namespace guanchao {

struct KnownCode {
    QString dm;  // as it stands in the table
    QString jc;
    bool isDelisted = false;
};
using KnownCodes = QHash<QString, KnownCode>;  // by the code in upper case

KnownCodes readKnownCodes(const Stores& stores);

struct CodeTableChanges {
    struct Renamed {
        ListedStock stock;
        QString before;
    };

    QList<ListedStock> added;
    QList<Renamed> renamed;
    QList<ListedStock> delisted;  // with the names of the table
    QList<ListedStock> back;      // marked before, and listed again

    bool isEmpty() const {
        return added.isEmpty() && renamed.isEmpty() && delisted.isEmpty() && back.isEmpty();
    }
};

// Whether all its codes have come in one go, as those that a new folder brings along.
bool isSeedTable(const Stores& stores);

// Why the list can't be that of all stocks, in Chinese: it lacks an exchange, or more than a fifth
// of what is known of one. Empty if it can.
QString codeListFault(const QList<ListedStock>& list, const KnownCodes& known, bool withBeijing);

// Stocks of Beijing are left as they are unless they are wanted. Only a whole list tells what is
// delisted; indexes and other codes that no list of stocks has are left alone.
CodeTableChanges changesBy(const QList<ListedStock>& list, const KnownCodes& known,
                           bool withBeijing, bool isWhole);

// All of them, or none.
void storeChanges(const Stores& stores, const CodeTableChanges& changes, const Initials& initials,
                  const QString& now);

}  // namespace guanchao
