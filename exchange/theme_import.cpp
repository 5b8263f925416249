#include "exchange/theme_import.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include "store/store_error.h"
#include "store/values.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The time of the file is read and not used: a row bears the time of its import.
QString insertTheme(const Recordset& row, const QString& date) {
    return u"insert into dzhzhuti(zhutiname,dm,jc,ztktime,xiangguandu,guanzhudu) values('"_s +
           row.value(0).toText() + u"','"_s + row.value(1).toText() + u"','"_s +
           row.value(2).toText() + u"','"_s + date + u"',"_s + row.value(4).toText() + u","_s +
           row.value(5).toText() + u")"_s;
}

QString insertCode(const QString& dm, const Recordset& row, const QString& date) {
    return u"insert into dmb(dm,numdm,jc,shenmu,newdmtime) values('"_s + dm + u"','"_s +
           row.value(1).toText() + u"','"_s + row.value(2).toText() + u"','"_s +
           row.value(3).toText() + u"','"_s + date + u"')"_s;
}

bool isStockCode(const QString& dm) {
    return (dm.startsWith(u"SH"_s) || dm.startsWith(u"SZ"_s)) && dm.size() < 9;
}

}  // namespace

ThemeImport::ThemeImport(const Stores& stores, Globals& globals, const Clock& clock,
                         Dialogs& dialogs, ExchangeRun& run)
    : stores_(stores), globals_(globals), clock_(clock), dialogs_(dialogs), run_(run) {}

void ThemeImport::importLibrary(const QString& path) {
    if (!QFileInfo::exists(path)) {
        dialogs_.tell(u"文件不存在!"_s + path);
        return;
    }
    const Activity activity(u"导入主题"_s);
    int count = 0;
    const bool complete = run_.run([&] { count = mergeLibrary(path); });
    if (complete) {
        dialogs_.tell(u"导入主题完成，共导入新的数据："_s + QString::number(count) + u"条"_s);
    }
}

int ThemeImport::mergeLibrary(const QString& path) {
    const QString date = timeText(clock_.now());
    Connection main = stores_.main.open();
    Connection library(path, stores_.backupKey);
    const QScopedValueRollback busy(globals_.hqmang, qint16(1));
    Transaction transaction = longTransaction(main);
    const int count = mergeThemes(
        Recordset(library,
                  u"select zhutiname,dm,jc,datetime(ztktime) as ztktime,xiangguandu,guanzhudu"
                  u" from dzhzhuti"_s),
        main, date);
    mergeCodes(Recordset(library,
                         u"select dm,numdm,jc,shenmu,datetime(newdmtime) as newdmtime from dmb"_s),
               main, date);
    transaction.commit();
    return count;
}

int ThemeImport::mergeThemes(Recordset rows, Connection& main, const QString& date) {
    int added = 0;
    run_.expect(rows.count());
    for (; !rows.atEnd(); rows.moveNext()) {
        const QString lookUp = u"select zhutiname,dm from dzhzhuti where zhutiname='"_s +
                               rows.value(0).toText() + u"' and dm='"_s + rows.value(1).toText() +
                               u"'"_s;
        if (Recordset(main, lookUp).atEnd()) {
            main.execute(insertTheme(rows, date));
            ++added;
        }
        run_.rowDone();
    }
    return added;
}

void ThemeImport::mergeCodes(Recordset rows, Connection& main, const QString& date) {
    run_.expect(rows.count());
    for (; !rows.atEnd(); rows.moveNext()) {
        const QString dm = rows.value(0).toText();
        if (Recordset(main, u"select dm from dmb where  dm='"_s + dm + u"'"_s).atEnd() &&
            isStockCode(dm.toUpper())) {
            main.execute(insertCode(dm.toUpper(), rows, date));
        }
        run_.rowDone();
    }
}

void ThemeImport::deleteAll() {
    const Activity activity(u"删除所有主题"_s);
    run_.requireIdle();
    // The window, and this with it, may go under its own question.
    const StoreFile main = stores_.main;
    Dialogs& dialogs = dialogs_;
    if (!dialogs.ask(u"确实要删除所有主题吗?如果你没有完整的主题库可供导入，不建议这样做。"_s)) {
        return;
    }
    main.open().execute(u"delete from dzhzhuti"_s);
    dialogs.tell(u"已删除所有主题!"_s);
}

}  // namespace guanchao
