#include "heat/heat_window.h"

#include "frame/looks.h"
#include "heat/heat_grid.h"
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
    controls.MSHFlexGrid1->setHint(rankingHint);
    controls.MSHFlexGrid2->setGrid(historyGrid_);
    controls.MSHFlexGrid2->setHint(u"点排名中的一行，这里列出它的历史"_s);
    connectGrids();
    connectButtons();
}

void HeatWindow::connectGrids() {
    connect(controls_.MSHFlexGrid1, &GridView::gridClicked, this, [this](int row, int col) {
        sortOnHeaderClick(rankingGrid_, row, col, {u"日期"_s}, lastSortCode_);
    });
    connect(controls_.MSHFlexGrid2, &GridView::gridClicked, this, [this](int row, int col) {
        sortOnHeaderClick(historyGrid_, row, col, {u"日期"_s}, lastSortCode_);
    });
    connect(controls_.MSHFlexGrid1, &GridView::gridPressed, this,
            [this](int row, int, Qt::MouseButton button) { MSHFlexGrid1_MouseDown(row, button); });
    connect(controls_.MSHFlexGrid1, &GridView::gridDoubleClicked, this,
            [this] { openSearchPage(); });
}

void HeatWindow::connectButtons() {
    connect(controls_.Command1, &QPushButton::clicked, this,
            [this] { collectorLaunch_.launch(ranking_.subject().collectWord); });
    connect(controls_.Command2, &QPushButton::clicked, this, &HeatWindow::Command2_Click);
    connect(controls_.Text1, &QLineEdit::returnPressed, this, &HeatWindow::Command2_Click);
    connect(controls_.Command9, &QPushButton::clicked, this, &HeatWindow::Command9_Click);
}

QSignalBlocker HeatWindow::quietIfHeld(QObject* box) const {
    return QSignalBlocker(activityHolding(environment_.stores.heat.path) ? box : nullptr);
}

// Marks the first row of the ranking that holds the text and scrolls to it.
void HeatWindow::Command2_Click() {
    if (const std::optional<int> row = findHeatRow(rankingGrid_, controls_.Text1->text())) {
        biaoji(rankingGrid_, *row);
        controls_.MSHFlexGrid1->scrollToTop(*row);
    }
}

void HeatWindow::Command9_Click() {
    ranking_.showRanking(controls_.Check2->isChecked());
}

// The menu is open by the time the history is read, which may fail.
void HeatWindow::MSHFlexGrid1_MouseDown(int row, Qt::MouseButton button) {
    const bool isRight = button == Qt::RightButton;
    const bool onItem = ranking_.choose(row);
    if (onItem) {
        controls_.Text1->setText(ranking_.current());
        controls_.plot->showDays({});
    }
    if (onItem && isRight) {
        biaoji(rankingGrid_, row);
    }
    if (isRight && row != 0) {
        openMenu(onItem);
    }
    if (onItem) {
        controls_.plot->showDays(ranking_.showHistory());
    }
}

}  // namespace guanchao
