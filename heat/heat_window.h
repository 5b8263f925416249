// What the windows of the internet figures share: a ranking with its search, the history of one
// item with its plot, its search page and the launch of the collector. A click on a header sorts
// either grid. The rules are in HeatRanking and CollectorLaunch.
#pragma once

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include "frame/day_plot.h"
#include "frame/environment.h"
#include "grid/grid_view.h"
#include "heat/collector_launch.h"
#include "heat/heat_ranking.h"

namespace guanchao {

class HeatWindow : public QDialog {
    Q_OBJECT

protected:
    struct Controls {
        QLineEdit* Text1 = nullptr;       // the current item, or what is searched for
        QCheckBox* Check2 = nullptr;      // shows all
        QPushButton* Command1 = nullptr;  // collects
        QPushButton* Command2 = nullptr;  // finds
        QPushButton* Command9 = nullptr;  // shows the ranking
        GridView* MSHFlexGrid1 = nullptr;
        GridView* MSHFlexGrid2 = nullptr;
        DayPlot* plot = nullptr;
    };

    HeatWindow(Environment& environment, const HeatSubject& subject);

    // `rankingHint` is shown where the ranking is empty.
    void take(const Controls& controls, const QString& rankingHint);
    // A setting that is shown writes itself back, which a run that holds the store refuses. What is
    // stored already can go without: then the box tells of no change while the blocker lives.
    QSignalBlocker quietIfHeld(QObject* box) const;
    void openSearchPage() { ranking_.openSearchPage(yinqingurl_); }

    void Command9_Click();
    Environment& environment_;
    ResultGrid rankingGrid_;
    ResultGrid historyGrid_;
    HeatRanking ranking_;
    QString yinqingurl_;  // 引擎网址: the template of the search page

private:
    void connectGrids();
    void connectButtons();

    void Command2_Click();
    void MSHFlexGrid1_RowChosen(int row);

    CollectorLaunch collectorLaunch_;
    Controls controls_;
};

}  // namespace guanchao
