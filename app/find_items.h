// What 快速查找 finds by letters: stocks, themes with their pages, and commands, by name, code or
// initials (声母).
#pragma once

#include <QList>
#include <QString>

#include "store/stores.h"

namespace guanchao {

struct FindItem {
    enum class Kind : std::uint8_t { stock, theme, page, command };
    Kind kind = Kind::stock;
    QString name;
    QString detail;    // a stock's code, a command's keys
    QString initials;  // lower case
    int command = -1;  // which one of those that were handed over
};

// The stocks of dmb, the themes of dzhzhuti and the page of each, in this order. Raises StoreError.
QList<FindItem> readFindItems(const Stores& stores);

// The same items with the initials of their names.
QList<FindItem> withInitials(QList<FindItem> items);

// Those that fit, the best first: equal to the text before beginning with it before holding it. At
// most so many; none for an empty text.
QList<FindItem> foundItems(const QList<FindItem>& items, const QString& typed, qsizetype most);

}  // namespace guanchao
