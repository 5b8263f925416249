// Form27, "文章管理器": the user's articles by date, author, category and words, and the way into
// their editor Form26. Table wenzhang of the article store, the code table dmb for the stock
// picker; the rules are in ArticleBrowser and ArticleQuery. Its load takes the article context
// over.
#pragma once

#include <QDialog>
#include <QMenu>
#include <memory>

#include "articles/article_browser.h"
#include "base/runs.h"
#include "frame/date_boxes.h"
#include "frame/environment.h"
#include "frame/undo_line.h"
#include "frame/windows.h"
#include "grid/picker_box.h"
#include "grid/result_grid.h"

namespace Ui {
class Form27;
}

namespace guanchao {

class Form27 : public QDialog {
    Q_OBJECT

public:
    Form27(Environment& environment, Windows& windows);
    ~Form27() override;

    // An editor has added, changed or deleted an article.
    void showChange();

private:
    void connectControls();
    void enableConditions();
    ArticleQuery query() const;
    void showCounts(const ArticleCounts& counts);

    void Form_Load();
    void Check1_Click();
    void Combo7_Click();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void MSHFlexGrid1_RowChosen(int row);
    void 打开文章_Click();
    void 删除本篇_Click();
    void 删除本表_Click();
    void remove(QCoro::Task<bool> (ArticleBrowser::*removal)(std::stop_token));

    Environment& environment_;
    Windows& windows_;
    std::unique_ptr<Ui::Form27> ui_;
    ResultGrid grid_;
    ArticleBrowser browser_;
    DateBoxes* first_ = nullptr;
    DateBoxes* last_ = nullptr;
    PickerBox* picker_ = nullptr;
    QMenu kuaimenu_;  // 快捷菜单: on an article
    std::unique_ptr<UndoLine> undoLine_;
    Runs runs_;
};

}  // namespace guanchao
