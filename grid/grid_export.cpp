#include "grid/grid_export.h"

#include <optional>

#include "base/activity.h"
#include "base/files.h"
#include "base/pause.h"
#include "grid/table_text.h"
#include "platform/pick_file.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A part of the rows at a time, between which the windows go on; nothing if the list changes then.
QCoro::Task<std::optional<QByteArray>> csvOf(QPointer<ResultGrid> grid, QList<int> cols,
                                             std::stop_token stop) {
    constexpr int rowsAtATime = 1000;
    constexpr std::chrono::milliseconds untilEventsAreDone(0);
    bool changed = false;
    const QObject whileReading;
    const auto noteChange = [&changed] { changed = true; };
    QObject::connect(grid, &QAbstractItemModel::modelAboutToBeReset, &whileReading, noteChange);
    QObject::connect(grid, &QAbstractItemModel::dataChanged, &whileReading, noteChange);
    QObject::connect(grid, &QAbstractItemModel::layoutAboutToBeChanged, &whileReading, noteChange);
    QObject::connect(grid, &QObject::destroyed, &whileReading, noteChange);
    QByteArray content = csvMark;
    const int rows = grid->rows();
    for (int row = 0; row < rows; ++row) {
        content += csvLine(*grid, row, cols).toUtf8();
        if (row % rowsAtATime == rowsAtATime - 1) {
            co_await pause(untilEventsAreDone, stop);
        }
        if (changed) {
            co_return std::nullopt;
        }
    }
    co_return content;
}

}  // namespace

void GridExport::start(ResultGrid& grid, const QString& name,
                       const std::function<QList<int>()>& shownCols) {
    runs_.start([this, grid = QPointer(&grid), name, shownCols](std::stop_token stop) {
        return run(grid, name, shownCols, stop);
    });
}

QCoro::Task<> GridExport::run(QPointer<ResultGrid> grid, QString name,
                              std::function<QList<int>()> shownCols, std::stop_token stop) {
    const QStringList filters = {u"CSV 表格(*.csv)"_s};
    const QString path = co_await dialogs_.baocunwenjian(stop, offeredFolder(), name, filters);
    if (path.isEmpty() || !grid) {
        co_return;
    }
    const int rows = grid->rows() - 1;
    const std::optional<QByteArray> content = co_await csvOf(grid, shownCols(), stop);
    if (!content) {
        dialogs_.tell(u"导出时列表变了，文件没有写入。请再导出一次。"_s);
        co_return;
    }
    const Activity activity(u"导出表格"_s, u"文件没有写入；原来有的文件没有变。"_s);
    replaceFile(path, *content);
    dialogs_.tell(u"已导出 "_s + QString::number(rows) + u" 行到："_s + path);
}

}  // namespace guanchao
