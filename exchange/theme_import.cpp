#include "exchange/theme_import.h"

#include <QFileInfo>

#include "base/activity.h"
#include "base/values.h"
#include "exchange/import_on_copies.h"
#include "exchange/library_rows.h"
#include "exchange/picked_store.h"
#include "exchange/row_values.h"
#include "exchange/table_merge.h"
#include "services/stock_code.h"
#include "store/patience.h"
#include "store/recordset.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString codeOf(const Recordset& row, int field) {
    return row.value(field).toText().toUpper();
}

// The time of the file is read and not used: a row bears the time of its import. A code goes in in
// upper case, unless the theme has it as the file writes it.
TableMerge themes(const QString& date) {
    return {themesQuery,
            [](const Recordset& row) -> QString {
                return u"select zhutiname,dm from dzhzhuti where zhutiname="_s +
                       quoted(row.value(0).toText()) + u" and dm in("_s + quoted(codeOf(row, 1)) +
                       u',' + quoted(row.value(1).toText()) + u')';
            },
            [date](const Recordset& row) {
                return insertTheme(row, codeOf(row, 1), date, numbersFrom(row, firstNumberOfTheme));
            }};
}

TableMerge codes(const QString& date) {
    return {codesQuery,
            [](const Recordset& row) -> QString {
                return u"select dm from dmb where  dm="_s + quoted(codeOf(row, 0));
            },
            [date](const Recordset& row) {
                const QString dm = codeOf(row, 0);
                return isCodeTableCode(dm) ? insertCode(row, dm, date) : QString();
            }};
}

QString allThemesWords(const Stores& stores) {
    Connection store = stores.main.open();
    const Recordset counts(store, u"select count(distinct zhutiname),count(*) from dzhzhuti"_s);
    return counts.value(0).toText() + u" 个主题，"_s + counts.value(1).toText() + u" 条"_s;
}

}  // namespace

int mergeLibrary(const Stores& stores, const QString& path, const QString& date,
                 ExchangeWork& work) {
    const Activity activity(u"导入主题"_s);
    return PickedStore{path, u"主题库"_s, u"zhutibackup.ztb"_s}.read([&] {
        Connection library(path, stores.backupKey);
        const AddRows addRows = [&](Connection& copies, ExchangeSteps& steps) {
            steps.expect(rowsOf({themes(date), codes(date)}, library));
            const int count = mergeRows(themes(date), copies, library, steps);
            mergeRows(codes(date), copies, library, steps);
            return count;
        };
        return importOnCopies(
            stores.main, {{u"dzhzhuti"_s, u"zhutiname,dm"_s}, {u"dmb"_s, u"dm"_s}}, addRows, work);
    });
}

ThemeImport::ThemeImport(const Stores& stores, const Clock& clock, Dialogs& dialogs,
                         ExchangeRun& run, Removals& removals, Edits& edits)
    : stores_(stores),
      clock_(clock),
      dialogs_(dialogs),
      run_(run),
      removals_(removals),
      edits_(edits) {}

QCoro::Task<> ThemeImport::importLibrary(QString path, std::stop_token stop) {
    if (!QFileInfo::exists(path)) {
        dialogs_.tell(u"文件不存在!"_s + path);
        co_return;
    }
    const auto job = [stores = stores_, path, date = timeText(clock_.now())](ExchangeWork& work) {
        return mergeLibrary(stores, path, date, work);
    };
    const std::optional<int> count = co_await run_.run(u"导入主题"_s, job, stop);
    dialogs_.tell(count ? u"导入主题完成，共导入新的数据："_s + QString::number(*count) + u"条"_s
                        : importStopped);
}

QCoro::Task<> ThemeImport::deleteAll(std::stop_token stop) {
    const QString name = u"删除所有主题"_s;
    run_.requireIdle(name);
    const QString count = u"（"_s + allThemesWords(stores_) + u"）"_s;
    const bool agreed = co_await dialogs_.ask(
        stop, u"确实要删除所有主题吗?如果你没有完整的主题库可供导入，不建议这样做。"_s + count);
    if (!agreed) {
        co_return;
    }
    run_.requireIdle(name);
    const auto step = [=, this] {
        const Activity activity(name);
        Connection store = stores_.main.open();
        Removal removal(removals_, store, stores_.main);
        Transaction transaction(store);
        removal.keep({u"dzhzhuti"_s, {u"zhutiname"_s, u"dm"_s}});
        store.execute(u"delete from dzhzhuti"_s);
        transaction.commit();
        edits_.pushRemoval(name, removal.complete(importWindowPlace, u"所有主题"_s + count));
    };
    co_await patiently(step, stop);
    dialogs_.tell(u"已删除所有主题!"_s);
}

}  // namespace guanchao
