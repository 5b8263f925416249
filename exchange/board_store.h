// A board's stocks as members of the theme of its name: only what is missing is added, one board in
// one transaction. Raises StoreError; nothing of the board is then written.
#pragma once

#include <QHash>
#include <cstdint>

#include "services/node_list.h"
#include "store/stores.h"

namespace guanchao {

struct StoredBoard {
    int added = 0;  // memberships that are new
    int known = 0;  // that the theme has now
    bool isNewTheme = false;
    int strangers = 0;  // stocks that aren't A shares of Shanghai or Shenzhen, and stay out
};

// 关注度 of memberships that are new: none, as imports give it, or that of their theme and at least
// 1, so that the main window shows them at once.
enum class NewAttention : std::uint8_t { none, ofTheme };

// Short names are those of the code table, or the service's for a code that it lacks. `date` is the
// time of the import.
StoredBoard storeBoard(const Stores& stores, const QString& theme, const QList<ListedStock>& stocks,
                       const QString& date, NewAttention attention = NewAttention::none);

// How many members each theme has.
QHash<QString, int> membersOfThemes(const Stores& stores);

}  // namespace guanchao
