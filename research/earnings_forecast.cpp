#include "research/earnings_forecast.h"

#include <utility>

#include "base/activity.h"
#include "base/files.h"
#include "base/values.h"
#include "formats/gbk.h"
#include "store/patience.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

const QString tingtaoge = u"听涛阁"_s;

QString codesText(const ResultGrid& grid) {
    QString text;
    for (int row = 1; row < grid.rows(); ++row) {
        text += trimBlanks(grid.textMatrix(row, 1)) + u'\t' + trimBlanks(grid.textMatrix(row, 2)) +
                u"\r\n"_s;
    }
    return text;
}

}  // namespace

EarningsForecast::EarningsForecast(const Stores& stores, const Globals& globals, Dialogs& dialogs,
                                   Search search)
    : stores_(stores), globals_(globals), dialogs_(dialogs), search_(std::move(search)) {}

QString EarningsForecast::ofRecord() const {
    return u" where rowid="_s + QString::number(globals_.dangqianjilu);
}

QCoro::Task<> EarningsForecast::edit(QString name, QString statement, std::stop_token stop) {
    const auto step = [=, this] {
        const Activity activity(name);
        stores_.main.open().execute(statement);
    };
    co_await patiently(step, stop);
}

QCoro::Task<> EarningsForecast::changeSummary(QString text, std::stop_token stop) {
    const QString statement = u"update yejiyugao set zhaiyao="_s + quoted(text) + ofRecord();
    co_await edit(u"修改摘要"_s, statement, stop);
    co_await search_(u"摘要"_s, stop);
    dialogs_.tell(u"修改摘要完成!"_s, tingtaoge);
}

QCoro::Task<> EarningsForecast::changeAttention(std::stop_token stop) {
    const QString record = ofRecord();
    const QString answer = co_await dialogs_.input(
        stop, u"请输入关注度，以方便查找自己最关心的股票。"_s, u"修改关注度"_s, u"0"_s);
    if (answer.isEmpty()) {
        co_return;
    }
    if (!readsAsNumber(answer)) {
        dialogs_.tell(u"关注度请输入数字。"_s);
        co_return;
    }
    const QString statement =
        u"update yejiyugao set guanzhudu="_s + numberText(numericPrefix(answer.trimmed())) + record;
    co_await edit(u"修改关注度"_s, statement, stop);
    // The message names no value.
    dialogs_.tell(u"修改关注度''完成!"_s);
    co_await search_(u"关注度"_s, stop);
}

QCoro::Task<> EarningsForecast::remove(std::stop_token stop) {
    const QString statement = u"delete from yejiyugao "_s + ofRecord();
    const bool agreed = co_await dialogs_.ask(stop, u" 确实要删除吗！"_s, tingtaoge);
    if (!agreed) {
        dialogs_.tell(u" 已退出！"_s);
        co_return;
    }
    co_await edit(u"删除业绩预告"_s, statement, stop);
    co_await search_(u"删除"_s, stop);
}

QCoro::Task<> EarningsForecast::exportCodes(const ResultGrid& grid, DateTexts date,
                                            std::stop_token stop) {
    const QString text = codesText(grid);
    const QString name = u"自选业绩预告"_s + dateText(packDate(date)) + u".txt"_s;
    const QStringList filters = {u"文本文档(*.txt)"_s, u"ASP文件(*.asp)"_s, u"VBS脚本(*.vbs)"_s,
                                 u"所有文件(*.*)"_s};
    const QString path =
        co_await dialogs_.baocunwenjian(stop, globals_.yingyongmulu + u"自选股"_s, name, filters);
    if (trimBlanks(path).isEmpty()) {
        co_return;
    }
    const Activity activity(u"导出自选股"_s, u"文件没有写入；原来有的文件没有变。"_s);
    // In GBK, as every text file that the program exchanges with others.
    replaceFile(path, gbkFromText(text));
    dialogs_.tell(u"文件保存成功！"_s, u"操作提示"_s);
}

}  // namespace guanchao
