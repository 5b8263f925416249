// 新闻标题: the headlines behind the news counts of an item and day, the newest first; a double
// click or Enter opens one in the browser. The rules are in heat/headline_store.
#pragma once

#include <QDialog>
#include <memory>

#include "frame/environment.h"
#include "grid/result_grid.h"
#include "heat/headline_store.h"

namespace Ui {
class HeadlinesWindow;
}

namespace guanchao {

class HeadlinesWindow : public QDialog {
    Q_OBJECT

public:
    // `keyword`: what the item is searched by; `day`: date text.
    HeadlinesWindow(Environment& environment, const QString& keyword, const QString& day);
    ~HeadlinesWindow() override;

private:
    void showHeadlines(const QList<Headline>& headlines);
    void fillGrid(const QList<Headline>& headlines);
    void openRow(int row);

    Environment& environment_;
    std::unique_ptr<Ui::HeadlinesWindow> ui_;
    ResultGrid grid_;
};

}  // namespace guanchao
