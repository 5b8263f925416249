// Real store files in a temporary application folder, with short ways to fill and read them.
#pragma once

#include <QStringList>
#include <QTemporaryDir>

#include "store/stores.h"
#include "tests/support/files.h"

namespace guanchao {

class TestStores {
public:
    // The tables are there and empty, but for the one row that the settings of the main and the
    // heat store always have. The history databases have their place in the folder too.
    TestStores();

    QString folder() const { return applicationFolder(directory_.path()); }

    // Runs statements, one by one, on the main store.
    void run(const QStringList& statements);

    // The rows of a query on the store, each as its values joined by "|"; a null shows as "null".
    QStringList rows(const QString& query) { return rows(stores.main, query); }
    static QStringList rows(const StoreFile& store, const QString& query);

    void addCode(const QString& dm, const QString& jc, double sp, double zhangfu);
    void addMember(const QString& zhutiname, const QString& dm, int guanzhudu = 1);
    void addMembers(const QString& zhutiname, const QStringList& dms, int guanzhudu = 1);
    // The values in the order of the columns, from rq to leirong, as SQL words.
    void addArticle(const QString& values);

    // Fail from now on, until the trigger "refuse" is dropped: "delete on dmb when old.dm=''".
    void refuse(const QString& statements) { refuse(stores.main, statements); }
    static void refuse(const StoreFile& store, const QString& statements);

    Stores stores;

private:
    // In memory where the system offers it: tests commit thousands of times.
    static QString folderTemplate();

    QTemporaryDir directory_{folderTemplate()};
};

// Another program's connection, which holds the store while it lives.
Connection held(const StoreFile& store, const QString& how = QStringLiteral("exclusive"));

// While it lives, a store that another holds is given up at once.
struct Impatience {
    Impatience() { Connection::setBusyTimeout(std::chrono::milliseconds(0)); }
    ~Impatience() { Connection::setBusyTimeout(std::chrono::seconds(5)); }
};

}  // namespace guanchao
