#include "exchange/theme_import.h"

#include <QFileInfo>
#include <QScopedValueRollback>

#include "base/activity.h"
#include "base/values.h"
#include "exchange/library_rows.h"
#include "exchange/table_merge.h"
#include "market/stock_code.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// The time of the file is read and not used: a row bears the time of its import.
TableMerge themes(const QString& date) {
    return {themesQuery,
            [](const Recordset& row) -> QString {
                return u"select zhutiname,dm from dzhzhuti where zhutiname='"_s +
                       row.value(0).toText() + u"' and dm='"_s + row.value(1).toText() + u"'"_s;
            },
            [date](const Recordset& row) { return insertTheme(row, date); }};
}

TableMerge codes(const QString& date) {
    return {codesQuery,
            [](const Recordset& row) -> QString {
                return u"select dm from dmb where  dm='"_s + row.value(0).toText() + u"'"_s;
            },
            [date](const Recordset& row) {
                const QString dm = row.value(0).toText().toUpper();
                return isCodeTableCode(dm) ? insertCode(row, dm, date) : QString();
            }};
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
    dialogs_.tell(complete ? u"导入主题完成，共导入新的数据："_s + QString::number(count) + u"条"_s
                           : importStopped);
}

int ThemeImport::mergeLibrary(const QString& path) {
    const QString date = timeText(clock_.now());
    Connection main = stores_.main.open();
    Connection library(path, stores_.backupKey);
    const QScopedValueRollback busy(globals_.hqmang, qint16(1));
    Transaction transaction = longTransaction(main);
    const int count = mergeRows(themes(date), main, library, run_);
    mergeRows(codes(date), main, library, run_);
    transaction.commit();
    return count;
}

QCoro::Task<> ThemeImport::deleteAll(std::stop_token stop) {
    requireIdle();
    const bool agreed = co_await dialogs_.ask(
        stop, u"确实要删除所有主题吗?如果你没有完整的主题库可供导入，不建议这样做。"_s);
    if (!agreed) {
        co_return;
    }
    const Activity activity(u"删除所有主题"_s);
    stores_.main.open().execute(u"delete from dzhzhuti"_s);
    dialogs_.tell(u"已删除所有主题!"_s);
}

void ThemeImport::requireIdle() const {
    const Activity activity(u"删除所有主题"_s);
    run_.requireIdle();
}

}  // namespace guanchao
