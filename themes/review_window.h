// 今日复盘: the themes of a day against the days before it, and what the user notes of the day.
// Reads zhutiriji, fupanbeizhu, dzhzhuti and dmb of the main store; the rules are in day_book,
// day_review and review_table. A theme that is chosen in it is the current one.
#pragma once

#include <QMenu>
#include <QTimer>
#include <memory>

#include "base/runs.h"
#include "frame/asking_window.h"
#include "frame/environment.h"
#include "frame/windows.h"
#include "grid/result_grid.h"
#include "grid/sparkline_delegate.h"
#include "themes/review_table.h"

namespace Ui {
class ReviewWindow;
}

namespace guanchao {

class ReviewWindow : public AskingWindow {
    Q_OBJECT

public:
    ReviewWindow(Environment& environment, Windows& windows);
    ~ReviewWindow() override;

    // What the popup of the main window offers on a theme; it outlives the window.
    void offer(const QList<QAction*>& onTheme);

    // The quotes, the themes or the book are others now.
    void readAgain();

    // A window whose note can't be saved stays.
    void reject() override;

private:
    void setUpGrid();
    void connectControls();
    QCoro::Task<> read(std::stop_token stop);
    void showData(const ReviewData& given);
    void showDays();
    void showRows();
    void showNote();
    void takeDay();
    void saveNote();
    QCoro::Task<> save(QDate day, QString note, std::stop_token stop);
    bool isSaved() const;
    void findNote();

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::ReviewWindow> ui_;
    ReviewData data_;
    QDate wanted_;  // invalid: the newest
    QDate noteOf_;  // the day whose note is in the field
    ResultGrid grid_;
    SparklineDelegate* lines_ = nullptr;
    QMenu themeMenu_;
    QTimer noteRests_;  // up when the user types no further
    Runs runs_;
    Runs saves_;
};

}  // namespace guanchao
