// The two tables of Form2: what fills them, and what a press on a row does.
#include "app/form2.h"
#include "base/pause.h"
#include "base/values.h"
#include "market/form21.h"
#include "store/patience.h"
#include "ui_form2.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Of so many in the store none has more attention than the threshold.
QString noThemesWords(int themes, const QString& threshold) {
    if (themes == 0) {
        return u"还没有主题\n\n用“帮助 / 开始使用…”填好，\n"
               "或用“数据 / 导入主题”、\n“主题 / 导入概念板块”"_s;
    }
    const double attention = numericPrefix(threshold);
    return u"%1 个主题的关注度不大于 %2\n\n%3，再按 F5"_s.arg(themes).arg(
        numberText(attention),
        attention == 0 ? u"在上面的“关注度大于”里写 -1"_s : u"把上面的“关注度大于”改小"_s);
}

}  // namespace

void Form2::刷新_Click() {
    refreshRuns_.stop();
    refreshRuns_.start([this](std::stop_token stop) { return refresh(stop); });
}

QCoro::Task<> Form2::refresh(std::stop_token stop) {
    const auto step = [this] {
        themeTable_.refresh(ui_->Text3->text(), [this](const UpdateLabels& it) { showTimes(it); });
        showThemesHint();
    };
    co_await patiently(step, stop);
    marketBand_->refresh();
    undoMenu_->showNext();
    emit tablesChanged();
}

QCoro::Task<> Form2::refreshShown(std::stop_token stop) {
    const auto step = [this] {
        themeTable_.refreshShown(ui_->Text3->text(),
                                 [this](const UpdateLabels& it) { showTimes(it); });
        showThemesHint();
    };
    co_await patiently(step, stop);
}

void Form2::showThemesHint() {
    if (themes_.rows() == 1) {
        ui_->MSHFlexGrid1->setHint(noThemesWords(themeTable_.themeCount(), ui_->Text3->text()));
    }
}

// Both, with the search, the rows that are marked and the places where they stand. Between the two
// the window turns: together they would hold it as long as a user notices.
QCoro::Task<> Form2::refreshTables(std::stop_token stop) {
    co_await refreshShown(stop);
    co_await pause(std::chrono::milliseconds(0), stop);
    const auto stocks = [this] { themeTable_.refreshStocks(); };
    co_await patiently(stocks, stop);
    marketBand_->refresh();
    undoMenu_->showNext();
    emit tablesChanged();
}

void Form2::showImported() {
    refreshRuns_.stop();
    refreshRuns_.start([this](std::stop_token stop) { return refreshTables(stop); });
}

void Form2::showTimes(const UpdateLabels& times) {
    ui_->Label4->setText(times.themes);
    ui_->Label6->setText(times.quotes);
}

void Form2::全部显示_Click() {
    showStocks(allStocks);
}

void Form2::showStocks(const QString& theme) {
    stockRuns_.stop();
    stockRuns_.start([=, this](std::stop_token stop) { return readStocks(theme, stop); });
}

QCoro::Task<> Form2::readStocks(QString theme, std::stop_token stop) {
    const auto step = [=, this] { themeTable_.xianshizhutigu(theme); };
    co_await patiently(step, stop);
}

void Form2::Command1_Click() {
    picker_->hideList();
    themeTable_.searchByCode(trimBlanks(ui_->Text1->text()));
}

void Form2::Command2_Click() {
    picker_->hideList();
    themeTable_.searchByName(ui_->Text2->text());
}

void Form2::MSHFlexGrid1_RowChosen(int row) {
    picker_->hideList();
    if (!themes_.isDataRow(row)) {
        themes_.setToolTipText({});
        return;
    }
    environment_.globals.dangqianzhuti = trimBlanks(themes_.textMatrix(row, 1));
    themes_.setToolTipText(environment_.globals.dangqianzhuti);
}

// A failure ends the click without a word.
void Form2::MSHFlexGrid1_Click(int row) {
    ui_->Text2->setText(trimBlanks(themes_.textMatrix(row, 1)));
    stockRuns_.stop();
    stockRuns_.start([this](std::stop_token stop) -> QCoro::Task<> {
        try {
            co_await readStocks(ui_->Text2->text(), stop);
        } catch (const std::exception&) {
            co_return;
        }
    });
}

// Keys walk on over the list of candidates that a press would open.
void Form2::MSHFlexGrid2_RowChosen(int row, GridView::By by) {
    if (!stocks_.isDataRow(row)) {
        return;
    }
    environment_.globals.dangqiandm = trimBlanks(stocks_.textMatrix(row, 2));
    environment_.globals.dangqianjc = trimBlanks(stocks_.textMatrix(row, 3));
    if (by == GridView::By::keys) {
        picker_->putText(environment_.globals.dangqiandm);
    } else {
        picker_->setText(environment_.globals.dangqiandm);
    }
}

// Three of its entries change the theme that was chosen last.
void Form2::MSHFlexGrid2_MenuOpens() {
    picker_->hideList();
    if (environment_.globals.dangqianzhuti.isEmpty()) {
        MSHFlexGrid1_RowChosen(themes_.markedRow());  // a window may have emptied it
    }
    for (QAction* entry : {ui_->addzhutigu, ui_->deletezhutigu, ui_->修改相关度}) {
        entry->setEnabled(!environment_.globals.dangqianzhuti.isEmpty());
    }
}

void Form2::MSHFlexGrid2_DblClick(int row) {
    if (stocks_.isDataRow(row)) {
        windows_.openAnew<Form21>();
    }
}

}  // namespace guanchao
