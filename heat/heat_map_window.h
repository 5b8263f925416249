// 热度图: the figures of all themes, companies or commodities by day as a heat map, and the news of
// one day against the gains of that day. While the collector writes, both follow. The rules are in
// heat/heat_map and heat/day_gains.
#pragma once

#include <QDialog>
#include <memory>

#include "frame/environment.h"
#include "frame/store_watch.h"
#include "grid/result_grid.h"
#include "heat/day_gains.h"

namespace Ui {
class HeatMapWindow;
}

namespace guanchao {

class HeatMapWindow : public QDialog {
    Q_OBJECT

public:
    HeatMapWindow(Environment& environment, HeatSubject subject);
    ~HeatMapWindow() override;

signals:
    void itemOpened(const QString& item);

private:
    struct Question {
        qsizetype field = 0;
        int calendarDays = 0;
        QDate day;  // none: the latest
    };
    struct Reading;

    void dressControls();
    void connectControls();
    Question asked() const;
    static std::shared_ptr<Reading> read(const Stores& stores, const HeatSubject& subject,
                                         const Question& question);
    const DayField& shownField() const;
    QCoro::Task<> readAnew(std::stop_token stop);
    void show(Reading& reading);
    void showDays(const QList<QDate>& days, const QDate& shown);
    void showLegend();
    void showNews(const DayOfNews& news);

    Environment& environment_;
    HeatSubject subject_;
    std::unique_ptr<Ui::HeatMapWindow> ui_;
    ResultGrid grid_;
    QStringList days_;   // that can be chosen
    QStringList items_;  // of the plot
    std::unique_ptr<StoreWatch> watch_;
};

}  // namespace guanchao
