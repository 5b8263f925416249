#include "exchange/backup_export.h"

#include <QDir>
#include <QFileInfo>

#include "base/activity.h"
#include "exchange/library_rows.h"
#include "exchange/store_copy.h"
#include "platform/fixed_folders.h"
#include "store/store_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Only the default folder is made where it is missing.
void makeDefaultFolder(const QString& folder) {
    if (folder != fixedPath(FixedPlace::exportFolder) || QFileInfo(folder).isDir()) {
        return;
    }
    if (!QDir().mkdir(folder)) {
        throw OperationError(u"不能建立文件夹 "_s + folder + u"。"_s);
    }
}

}  // namespace

BackupExport::BackupExport(const Stores& stores, Dialogs& dialogs, ExchangeRun& run)
    : stores_(stores), dialogs_(dialogs), run_(run) {}

QCoro::Task<> BackupExport::exportData(std::stop_token stop) {
    const QString offered = fixedPath(FixedPlace::exportFolder);
    const QString folder =
        co_await dialogs_.input(stop, u"将导出数据到下列文件夹："_s, u"导出数据"_s, offered);
    if (folder.isEmpty()) {
        dialogs_.tell(u"已取消导出数据!"_s);
        co_return;
    }
    {
        const Activity activity(u"导出数据"_s);
        makeDefaultFolder(folder);
    }
    if (!QFileInfo(folder).isDir()) {
        dialogs_.tell(u"请先建立备份文件夹:"_s + folder);
        co_return;
    }
    if (writeFiles(folder)) {
        dialogs_.tell(u"已导出数据到："_s + folder +
                      u"。 主题库：zhutibackup.ztb；文章库：wenzhang.ztb；"
                      u"主题新闻数量库：caijiqi.ztb"_s);
    }
}

bool BackupExport::writeFiles(const QString& folder) {
    const Activity activity(u"导出数据"_s,
                            u"程序自己的数据没有改动，没有写完的备份文件没有换掉原来的。"_s);
    return run_.run([&] {
        // The first path is joined as it stands: a folder typed without its final separator gives
        // a file beside the folder.
        replaceStore(folder + u"zhutibackup.ztb"_s,
                     [this](const QString& path) { writeLibrary(path); });
        copyStore(stores_.article, folder + u"/wenzhang.ztb"_s);
        copyStore(stores_.heat, folder + u"/caijiqi.ztb"_s);
    });
}

void BackupExport::writeLibrary(const QString& path) {
    copyFile(stores_.backupTemplate.path, path);
    Connection main = stores_.main.open();
    Connection library(path, stores_.backupKey);
    Transaction transaction(library);
    const auto write = [&](Recordset rows, const std::function<QString(const Recordset&)>& insert) {
        run_.expect(rows.count());
        for (; !rows.atEnd(); rows.moveNext()) {
            library.execute(insert(rows));
            run_.rowDone();
        }
    };
    write(Recordset(main, themesQuery),
          [](const Recordset& row) { return insertTheme(row, row.value(3).toText()); });
    write(Recordset(main, codesQuery), [](const Recordset& row) {
        return insertCode(row, row.value(0).toText(), row.value(4).toText());
    });
    transaction.commit();
}

}  // namespace guanchao
