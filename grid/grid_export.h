// 导出表格: the rows that a view shows, as a CSV file.
#pragma once

#include <QPointer>
#include <functional>

#include "base/runs.h"
#include "grid/result_grid.h"
#include "platform/dialogs.h"

namespace guanchao {

class GridExport {
public:
    GridExport(Dialogs& dialogs, Failures& failures) : dialogs_(dialogs), runs_(failures) {}

    // Asks for the file, and offers the name. `shownCols` is asked once it is chosen.
    void start(ResultGrid& grid, const QString& name, const std::function<QList<int>()>& shownCols);

private:
    QCoro::Task<> run(QPointer<ResultGrid> grid, QString name,
                      std::function<QList<int>()> shownCols, std::stop_token stop);

    Dialogs& dialogs_;
    Runs runs_;
};

}  // namespace guanchao
