// Real store files in a temporary application folder, with short ways to fill and read them.
#pragma once

#include <QStringList>
#include <QTemporaryDir>

#include "store/stores.h"

namespace guanchao {

class TestStores {
public:
    // The tables are there and empty, but for the one row that the settings of the main and the
    // heat store always have.
    TestStores();

    QString folder() const { return applicationFolder(directory_.path()); }

    // Runs statements, one by one, on the main store.
    void run(const QStringList& statements);

    // The rows of a query on the store, each as its values joined by "|"; a null shows as "null".
    QStringList rows(const QString& query) { return rows(stores.main, query); }
    static QStringList rows(const StoreFile& store, const QString& query);

    void addCode(const QString& dm, const QString& jc, double sp, double zhangfu);
    void addMember(const QString& zhutiname, const QString& dm, int guanzhudu = 1);
    // The values in the order of the columns, from rq to leirong, as SQL words.
    void addArticle(const QString& values);

    Stores stores;

private:
    // In memory where the system offers it: tests commit thousands of times.
    static QString folderTemplate();

    QTemporaryDir directory_{folderTemplate()};
};

// While it lives, a store that another holds is given up at once.
struct Impatience {
    Impatience() { Connection::setBusyTimeout(std::chrono::milliseconds(0)); }
    ~Impatience() { Connection::setBusyTimeout(std::chrono::seconds(5)); }
};

}  // namespace guanchao
