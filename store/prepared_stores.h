// Makes the store files of a new application folder from the schema and the seed lists. The program
// itself creates no store; a file that is there is never touched.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include "store/stores.h"

namespace guanchao {

// Where a new folder's pages lead.
inline const QString publicF10Pages = QStringLiteral("https://basic.10jqka.com.cn/600000/");
inline const QString publicSearchPages = QStringLiteral("https://www.baidu.com/s?wd=tihuandm");

enum class Schema { main, heat, article, pinyin, backup };

// The statements that make the tables of a store, and the names of these.
QString schemaText(Schema schema);
QStringList tablesOf(Schema schema);
// Those that a store has, without the library's own.
QStringList tablesIn(Connection& store);

// Makes what is missing among the stores of `folder`, seeded from the lists in `dataFolder`, and
// returns the names of the files made. Raises StoreError or std::runtime_error; a file then made
// halfway is removed.
QStringList prepareStores(const QString& folder, const QString& dataFolder, const QDateTime& now);

}  // namespace guanchao
