// What the windows about themes and the tables of Form2 do for each other.
#include "app/form2.h"
#include "base/values.h"
#include "research/form24.h"
#include "themes/form22.h"
#include "themes/form38.h"
#include "themes/review_window.h"
#include "themes/theme_page.h"
#include "ui_form2.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Without the commands of the grid that opens the menu.
QList<QAction*> entriesOf(const QMenu& menu) {
    QList<QAction*> entries = menu.actions();
    entries.removeIf([](const QAction* it) { return qobject_cast<GridView*>(it->parent()); });
    while (!entries.isEmpty() && entries.last()->isSeparator()) {
        entries.removeLast();
    }
    return entries;
}

}  // namespace

void Form2::connectThemeWindows(QWidget* window) {
    const auto undoes = [&] { window->addActions({ui_->撤消, ui_->重做}); };
    if (auto* map = qobject_cast<Form38*>(window)) {
        map->offer(entriesOf(leftkuaimenu_), entriesOf(kuaimenu_));
        map->addAction(ui_->gengxin);
        undoes();
        connect(this, &Form2::tablesChanged, map, &Form38::readAgain);
        connect(map, &Form38::themeChosen, this, &Form2::markTheme);
        connect(map, &Form38::stockMenuOpens, this, &Form2::MSHFlexGrid2_MenuOpens);
    }
    if (auto* review = qobject_cast<ReviewWindow*>(window)) {
        review->offer(entriesOf(leftkuaimenu_));
        undoes();
        connect(this, &Form2::tablesChanged, review, &ReviewWindow::readAgain);
        connect(dayBookDesk_.get(), &DayBookDesk::written, review, &ReviewWindow::readAgain);
    }
    if (auto* themesOfStock = qobject_cast<Form22*>(window)) {
        undoes();
        connect(this, &Form2::tablesChanged, themesOfStock, &Form22::readAgain);
    }
    if (auto* page = qobject_cast<ThemePage*>(window)) {
        page->offer(entriesOf(kuaimenu_));
        undoes();
        connect(this, &Form2::tablesChanged, page, &ThemePage::readAgain);
        connect(page, &ThemePage::stockMenuOpens, this, &Form2::MSHFlexGrid2_MenuOpens);
    }
}

void Form2::openPage(const QString& theme) {
    environment_.globals.dangqianzhuti = theme;
    windows_.openAnew<ThemePage>();
}

// On the name all about the theme, elsewhere its history.
void Form2::MSHFlexGrid1_DblClick(int, int col) {
    constexpr int nameColumn = 1;
    if (col == nameColumn) {
        windows_.openAnew<ThemePage>();
    } else {
        windows_.openAnew<Form24>();
    }
}

// As a click on its row, which may not be listed now.
void Form2::markTheme(const QString& name) {
    for (int row = 1; row < themes_.rows(); ++row) {
        if (trimBlanks(themes_.textMatrix(row, 1)) == name) {
            themes_.biaoji(row);
            MSHFlexGrid1_RowChosen(row);
            MSHFlexGrid1_Click(row);
            return;
        }
    }
    ui_->Text2->setText(name);
    showStocks(name);
}

// The stocks of a theme that bears another name now are those of that name.
void Form2::showEdited(const Edit& edit, Way way) {
    undoLine_->showLast();
    ui_->Label1->setText((way == Way::back ? u"已撤消：%1"_s : u"已重做：%1"_s).arg(edit.name));
    const QString& former = way == Way::back ? edit.nameAfter : edit.nameBefore;
    const QString& now = way == Way::back ? edit.nameBefore : edit.nameAfter;
    if (!former.isEmpty() && environment_.globals.dangqianzhuti == former) {
        environment_.globals.dangqianzhuti = now;
        showStocks(now);
    }
    showImported();
}

}  // namespace guanchao
