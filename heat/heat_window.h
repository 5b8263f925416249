// What the windows of the internet figures share: a ranking with its search and a small line of the
// last days in each row, the history of one item with its plot, its search page and the launch of
// the collector. While the collector writes, what is shown follows. A click on a header sorts
// either grid. The rules are in HeatRanking and CollectorLaunch.
#pragma once

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <memory>

#include "frame/day_plot.h"
#include "frame/environment.h"
#include "frame/store_watch.h"
#include "grid/grid_view.h"
#include "grid/sparkline_delegate.h"
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
        QPushButton* heatMap = nullptr;
        QAction* openHeatMap = nullptr;  // of the menu of a row, and by its key
        GridView* MSHFlexGrid1 = nullptr;
        GridView* MSHFlexGrid2 = nullptr;
        DayPlot* plot = nullptr;
    };

    HeatWindow(Environment& environment, const HeatSubject& subject);

    // Once, for the derived window, when its controls are there. `rankingHint` is shown where the
    // ranking is empty.
    void take(const Controls& controls, const QString& rankingHint);
    // A setting that is shown writes itself back, which a run that holds the store refuses. What is
    // stored already can go without: then the box tells of no change while the blocker lives.
    QSignalBlocker quietIfHeld(QObject* box) const;
    void openSearchPage() { ranking_.openSearchPage(yinqingurl_); }

    // The action's own key, where the view has the focus.
    static void offerByKey(QAction& action, GridView& view);

    void Command9_Click();
    void emptyHistory();

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
    void showCurrent();
    void openHeatMap();
    void openItem(const QString& item);

    QCoro::Task<> readAnew(std::stop_token stop);
    void showBeside(const HeatReading& reading);
    void showLastDays(const HeatDays& lastDays);
    void showHistoryPlot(const QList<DayValues>& days);

    CollectorLaunch collectorLaunch_;
    Controls controls_;
    QList<DayValues> plotted_;
    SparklineDelegate* sparklines_ = nullptr;
    std::unique_ptr<StoreWatch> watch_;
};

}  // namespace guanchao
