#include "heat/heat_window.h"

#include <algorithm>

#include "base/worker.h"
#include "frame/looks.h"
#include "frame/open_windows.h"
#include "heat/heat_grid.h"
#include "heat/heat_map_window.h"
#include "store/held_stores.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

HeatWindow::HeatWindow(Environment& environment, const HeatSubject& subject)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ranking_(environment.stores, environment.globals, environment.clock, environment.shell,
               subject, rankingGrid_, historyGrid_),
      collectorLaunch_(environment.stores, environment.globals, environment.dialogs,
                       environment.processes) {}

void HeatWindow::take(const Controls& controls, const QString& rankingHint) {
    controls_ = controls;
    controls.Command9->setIcon(updateIcon());
    controls.Command2->setIcon(searchIcon());
    controls.MSHFlexGrid1->setGrid(rankingGrid_);
    controls.MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    controls.MSHFlexGrid1->setHint(rankingHint);
    controls.MSHFlexGrid2->setGrid(historyGrid_);
    controls.MSHFlexGrid2->allowExport(environment_.dialogs, environment_.failures);
    controls.MSHFlexGrid2->setHint(u"点排名中的一行，这里列出它的历史"_s);
    controls.plot->setHint(u"点排名中的一行，这里画出它的走势"_s);
    sparklines_ = new SparklineDelegate(themeColour, sparklineTwips, this);
    controls.MSHFlexGrid1->setItemDelegateForColumn(heatItemColumn, sparklines_);
    connectGrids();
    connectButtons();
    watch_ = std::make_unique<StoreWatch>(*this, environment_.stores.heat, environment_.failures,
                                          [this](std::stop_token stop) { return readAnew(stop); });
}

void HeatWindow::connectGrids() {
    controls_.MSHFlexGrid1->setSortable({u"日期"_s});
    controls_.MSHFlexGrid2->setSortable({u"日期"_s});
    controls_.MSHFlexGrid2->shareSortOrder(*controls_.MSHFlexGrid1);
    connect(controls_.MSHFlexGrid1, &GridView::rowChosen, this,
            &HeatWindow::MSHFlexGrid1_RowChosen);
    connect(controls_.MSHFlexGrid1, &GridView::rowDoubleClicked, this,
            [this] { openSearchPage(); });
}

void HeatWindow::connectButtons() {
    connect(controls_.Command1, &QPushButton::clicked, this,
            [this] { collectorLaunch_.launch(ranking_.subject().collectWord); });
    connect(controls_.Command2, &QPushButton::clicked, this, &HeatWindow::Command2_Click);
    connect(controls_.Text1, &QLineEdit::returnPressed, this, &HeatWindow::Command2_Click);
    connect(controls_.Command9, &QPushButton::clicked, this, &HeatWindow::Command9_Click);
    connect(controls_.heatMap, &QPushButton::clicked, this, &HeatWindow::openHeatMap);
    connect(controls_.openHeatMap, &QAction::triggered, this, &HeatWindow::openHeatMap);
    offerByKey(*controls_.openHeatMap, *controls_.MSHFlexGrid1);
}

void HeatWindow::offerByKey(QAction& action, GridView& view) {
    action.setShortcutContext(Qt::WidgetShortcut);
    action.setShortcutVisibleInContextMenu(true);
    view.addAction(&action);
}

QSignalBlocker HeatWindow::quietIfHeld(QObject* box) const {
    return QSignalBlocker(holderOf(environment_.stores.heat.path) ? box : nullptr);
}

// Marks the first row of the ranking that holds the text and scrolls to it.
void HeatWindow::Command2_Click() {
    if (const std::optional<int> row = findHeatRow(rankingGrid_, controls_.Text1->text())) {
        rankingGrid_.biaoji(*row);
        controls_.MSHFlexGrid1->scrollToTop(*row);
    }
}

void HeatWindow::Command9_Click() {
    ranking_.showRanking(controls_.Check2->isChecked());
}

void HeatWindow::MSHFlexGrid1_RowChosen(int row) {
    if (ranking_.choose(row)) {
        showCurrent();
    }
}

void HeatWindow::showCurrent() {
    controls_.Text1->setText(ranking_.current());
    showHistoryPlot({});
    showHistoryPlot(ranking_.showHistory());
}

void HeatWindow::openHeatMap() {
    auto window = std::make_unique<HeatMapWindow>(environment_, ranking_.subject());
    connect(window.get(), &HeatMapWindow::itemOpened, this, &HeatWindow::openItem);
    environment_.openWindows.close<HeatMapWindow>();
    environment_.openWindows.adopt(window.release());
}

// One that is not in the ranking of the day has its history all the same.
void HeatWindow::openItem(const QString& item) {
    if (const std::optional<int> row = ranking_.chooseItem(item)) {
        controls_.MSHFlexGrid1->scrollTo(rankingGrid_.index(*row - 1, heatItemColumn));
    }
    bringToFront(*this);
    showCurrent();
}

void HeatWindow::emptyHistory() {
    ranking_.emptyHistory();
    showHistoryPlot({});
}

void HeatWindow::showHistoryPlot(const QList<DayValues>& days) {
    plotted_ = days;
    controls_.plot->showDays(days);
}

// What the user has chosen meanwhile is read too.
QCoro::Task<> HeatWindow::readAnew(std::stop_token stop) {
    bool isShown = false;
    while (!isShown) {
        const auto read = [heat = environment_.stores.heat, subject = ranking_.subject(),
                           question = ranking_.shown()](Work<std::monostate>&) {
            return readHeat(heat, subject, question);
        };
        const std::shared_ptr<HeatReading> reading = co_await inWorker(read, stop);
        isShown = ranking_.showAnew(*reading);
        if (isShown) {
            showBeside(*reading);
        }
    }
}

void HeatWindow::showBeside(const HeatReading& reading) {
    showLastDays(reading.lastDays);
    if (!std::ranges::equal(reading.historyDays, plotted_, {}, &DayValues::words,
                            &DayValues::words)) {
        showHistoryPlot(reading.historyDays);
    }
}

void HeatWindow::showLastDays(const HeatDays& lastDays) {
    QHash<QString, QList<double>> lines;
    QHash<QString, QString> words;
    for (const ItemDays& it : lastDays.items) {
        lines[it.item] = comparableFigures(it);
        words[it.item] = sparklineWords(ranking_.subject().fields.first(), it);
    }
    sparklines_->setLines(lines);
    rankingGrid_.setItemNotes(words);
    controls_.MSHFlexGrid1->viewport()->update();
}

}  // namespace guanchao
