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
    controls.MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    controls.MSHFlexGrid1->setHint(rankingHint);
    controls.MSHFlexGrid2->setGrid(historyGrid_);
    controls.MSHFlexGrid2->allowExport(environment_.dialogs, environment_.failures);
    controls.MSHFlexGrid2->setHint(u"点排名中的一行，这里列出它的历史"_s);
    controls.plot->setHint(u"点排名中的一行，这里画出它的走势"_s);
    connectGrids();
    connectButtons();
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
        controls_.Text1->setText(ranking_.current());
        controls_.plot->showDays({});
        controls_.plot->showDays(ranking_.showHistory());
    }
}

}  // namespace guanchao
