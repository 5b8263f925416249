#include "heat/headlines_window.h"

#include "base/activity.h"
#include "base/values.h"
#include "grid/table_columns.h"
#include "ui_headlines_window.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int numberWidth = 700;
const QList<TableColumn> columns = {
    {u"时间"_s, 2300}, {u"标题"_s, 7400}, {u"媒体"_s, 1700}, {u"网址"_s, 4200}};
constexpr int addressColumn = 4;

}  // namespace

HeadlinesWindow::HeadlinesWindow(Environment& environment, const QString& keyword,
                                 const QString& day)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::HeadlinesWindow>()) {
    const Activity activity(u"读取新闻标题"_s);
    const QList<Headline> headlines = readHeadlines(environment.stores.heat, keyword, day);
    ui_->setupUi(this);
    setWindowTitle(u"新闻标题　"_s + keyword + u"　"_s + day);
    ui_->headlines->setGrid(grid_);
    ui_->headlines->allowExport(environment_.dialogs, environment_.failures);
    ui_->headlines->setSortable({u"时间"_s});
    ui_->headlines->setHint(
        u"没有这一天的新闻标题\n\n只有按标题计数的采集（services.ini 的 search 写着"
        u" kind=eastmoney）才留下标题，并且只留最近采集的一天"_s);
    connect(ui_->headlines, &GridView::rowDoubleClicked, this, &HeadlinesWindow::openRow);
    connect(ui_->headlines, &GridView::enterPressed, this, &HeadlinesWindow::openRow);
    connect(ui_->open, &QPushButton::clicked, this, [this] { openRow(grid_.markedRow()); });
    showHeadlines(headlines);
}

HeadlinesWindow::~HeadlinesWindow() = default;

void HeadlinesWindow::showHeadlines(const QList<Headline>& headlines) {
    const bool hasAny = !headlines.isEmpty();
    ui_->open->setEnabled(hasAny);
    ui_->explanation->setVisible(hasAny);
    if (!hasAny) {
        return;
    }
    ui_->explanation->setText(u"共 %1 条，从新到旧%2。双击一行或按回车，用浏览器打开。"_s.arg(
        QString::number(headlines.size()),
        headlines.size() < mostKeptHeadlines ? QString() : u"，更早的没有留"_s));
    fillGrid(headlines);
    grid_.biaoji(1);
}

void HeadlinesWindow::fillGrid(const QList<Headline>& headlines) {
    const GridFill fill(grid_);
    beginTable(grid_, columns, headlines.size(), numberWidth);
    for (int row = 1; row < grid_.rows(); ++row) {
        const Headline& it = headlines[row - 1];
        grid_.setTextMatrix(row, 1, timeText(it.time));
        grid_.setTextMatrix(row, 2, it.title);
        grid_.setTextMatrix(row, 3, it.media);
        grid_.setTextMatrix(row, addressColumn, it.url);
    }
}

void HeadlinesWindow::openRow(int row) {
    const QString url = grid_.isDataRow(row) ? grid_.textMatrix(row, addressColumn) : QString();
    if (!url.isEmpty()) {
        environment_.shell.open(url);
    }
}

}  // namespace guanchao
