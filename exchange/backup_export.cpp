#include "exchange/backup_export.h"

#include <QDir>
#include <QFileInfo>
#include <filesystem>
#include <functional>

#include "base/activity.h"
#include "base/files.h"
#include "exchange/library_rows.h"
#include "exchange/row_values.h"
#include "exchange/store_copy.h"
#include "platform/home_places.h"
#include "store/fresh_store.h"
#include "store/store_error.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString withHome(const QString& typed) {
    const bool inHome = typed == u'~' || typed.startsWith(u"~/");
    return inHome ? QDir::homePath() + typed.sliced(1) : typed;
}

// Why nothing can be written to the folder; empty if something can.
QString obstacleIn(const QString& folder) {
    const QString path = QDir::cleanPath(folder);
    std::error_code error;
    switch (std::filesystem::status(QFile::encodeName(path).toStdString(), error).type()) {
        case std::filesystem::file_type::not_found:
            return u"请先建立备份文件夹:"_s;
        case std::filesystem::file_type::directory:
            break;
        case std::filesystem::file_type::none:
            return u"没有访问这个文件夹的权限，请另选一个文件夹，或者改它的权限:"_s;
        default:
            return u"这是一个文件，请另选一个文件夹:"_s;
    }
    const QFileInfo info(path);
    return info.isWritable() && info.isExecutable()
               ? QString()
               : u"不能写入这个文件夹，请另选一个文件夹，或者改它的权限:"_s;
}

// Only the default folder is made where it is missing.
void makeDefaultFolder(const QString& folder) {
    if (folder == homePath(HomePlace::exportFolder) && !QFileInfo::exists(folder.chopped(1))) {
        makeFolder(folder);
    }
}

// What the library takes, read before its file is begun.
struct LibraryRows {
    explicit LibraryRows(Connection main) : themes(main, themesQuery), codes(main, codesQuery) {}

    Recordset themes;
    Recordset codes;
};

// A row that the library can't hold is named.
void insertRow(Connection& library, const QString& statement,
               const std::function<QString()>& words) {
    try {
        library.execute(statement);
    } catch (const StoreError& failure) {
        if (failure.fault() != StoreFault::other) {
            throw;
        }
        throw StoreError(words() + u"不能写入："_s + failure.reason(), failure.path(),
                         failure.statement());
    }
}

void writeLibrary(LibraryRows rows, const StoreFile& library, ExchangeSteps& steps) {
    Connection connection = library.open();
    Transaction transaction(connection);
    const auto themeWords = [&row = rows.themes]() -> QString {
        return u"表 dzhzhuti 的一行（主题“"_s + row.value(0).toText() + u"”，代码“"_s +
               row.value(1).toText() + u"”）"_s;
    };
    const auto codeWords = [&row = rows.codes]() -> QString {
        return u"表 dmb 的一行（代码“"_s + row.value(0).toText() + u"”）"_s;
    };
    for (Recordset& row = rows.themes; !row.atEnd(); row.moveNext()) {
        insertRow(connection,
                  insertTheme(row, row.value(1).toText(), row.value(3).toText(),
                              valuesFrom(row, firstNumberOfTheme)),
                  themeWords);
        steps.stepDone();
    }
    for (Recordset& row = rows.codes; !row.atEnd(); row.moveNext()) {
        insertRow(connection, insertCode(row, row.value(0).toText(), row.value(4).toText()),
                  codeWords);
        steps.stepDone();
    }
    transaction.commit();
}

}  // namespace

void writeBackup(const Stores& stores, const QString& folder, ExchangeWork& work) {
    const Activity activity(u"导出数据"_s,
                            u"程序自己的数据没有改动，没有写完的备份文件没有换掉原来的。"_s);
    ExchangeSteps steps(work);
    const auto blockDone = [&steps] { steps.stepDone(); };
    replaceStore(folder + u"zhutibackup.ztb"_s, [&](const QString& path) {
        copyFile(stores.backupTemplate.path, path);
        const LibraryRows rows(stores.main.open());
        steps.expect(rows.themes.count() + rows.codes.count() + blocksOf(stores.article) +
                     blocksOf(stores.heat));
        writeLibrary(rows, {path, stores.backupKey}, steps);
    });
    copyStore(stores.article, folder + u"wenzhang.ztb"_s, blockDone);
    copyStore(stores.heat, folder + u"caijiqi.ztb"_s, blockDone);
}

BackupExport::BackupExport(const Stores& stores, Dialogs& dialogs, ExchangeRun& run)
    : stores_(stores), dialogs_(dialogs), run_(run) {}

QCoro::Task<> BackupExport::exportData(std::stop_token stop) {
    const QString offered = homePath(HomePlace::exportFolder);
    const QString typed =
        co_await dialogs_.input(stop, u"将导出数据到下列文件夹："_s, u"导出数据"_s, offered);
    if (typed.isEmpty()) {
        dialogs_.tell(u"已取消导出数据!"_s);
        co_return;
    }
    const QString folder = applicationFolder(withHome(typed));
    {
        const Activity activity(u"导出数据"_s);
        makeDefaultFolder(folder);
    }
    const QString obstacle = obstacleIn(folder);
    if (!obstacle.isEmpty()) {
        dialogs_.tell(obstacle + typed);
        co_return;
    }
    const auto job = [stores = stores_, folder](ExchangeWork& work) {
        writeBackup(stores, folder, work);
        return true;
    };
    const std::optional<bool> written = co_await run_.run(u"导出数据"_s, job, stop);
    dialogs_.tell(written ? u"已导出数据到："_s + typed +
                                u"。 主题库：zhutibackup.ztb；文章库：wenzhang.ztb；"
                                u"主题新闻数量库：caijiqi.ztb"_s
                          : u"导出已停止，没有写完的备份文件没有换掉原来的。"_s);
}

}  // namespace guanchao
