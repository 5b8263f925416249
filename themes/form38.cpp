#include "themes/form38.h"

#include <QShortcut>
#include <algorithm>

#include "base/values.h"
#include "base/worker.h"
#include "grid/stock_rows.h"
#include "market/form21.h"
#include "market/form36.h"
#include "themes/map_view.h"
#include "themes/theme_page.h"
#include "ui_form38.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype longestName = 30;  // in the line above the map

constexpr MapView::Kind themesKind = {.fullGain = 3, .words = themeWords};
constexpr MapView::Kind stocksKind = {.fullGain = 10, .words = stockWords};

QString legendWords(const MapView::Kind& kind) {
    return u"红涨绿跌，±%1% 起颜色最深"_s.arg(kind.fullGain);
}

}  // namespace

Form38::Form38(Environment& environment, Windows& windows)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form38>()),
      runs_(environment.failures) {
    ui_->setupUi(this);
    ui_->map->setHint(u"正在读取主题…"_s);
    addCommands();
    connectControls();
    showPlace({});
    readAgain();
    ui_->map->setFocus();
}

Form38::~Form38() = default;

void Form38::addCommands() {
    themeMenu_.setObjectName(u"themeMenu"_s);
    stockMenu_.setObjectName(u"stockMenu"_s);
    themeMenu_.addAction(u"进入主题"_s, this, &Form38::Map_Opened);
    chart_ = new QAction(u"K线图"_s, this);
    chart_->setShortcut(Qt::Key_F6);
    ui_->map->addAction(chart_);
    chart_->setShortcutContext(Qt::WidgetShortcut);
    connect(chart_, &QAction::triggered, this, &Form38::openChart);
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, &Form38::readAgain);
}

void Form38::connectControls() {
    connect(ui_->Command1, &QPushButton::clicked, this, &Form38::goBack);
    connect(ui_->Command2, &QPushButton::clicked, this, [this] {
        takeChosen();
        windows_.openAnew<ThemePage>();
    });
    connect(ui_->Command3, &QPushButton::clicked, this, &Form38::readAgain);
    connect(ui_->Combo1, &QComboBox::currentIndexChanged, this,
            [this](int index) { ui_->map->setArea(static_cast<MapArea>(index)); });
    connect(ui_->map, &MapView::areaChanged, this, [this](MapArea area) {
        ui_->Combo1->setCurrentIndex(static_cast<int>(area));
        showPlace(ui_->map->boxes());
    });
    connect(ui_->map, &MapView::boxChosen, this, [this] {
        takeChosen();
        showChosen();
    });
    connect(ui_->map, &MapView::boxOpened, this, &Form38::Map_Opened);
    connect(ui_->map, &MapView::goesBack, this, &Form38::goBack);
    connect(ui_->map, &MapView::menuAsked, this, &Form38::Map_MenuAsked);
}

void Form38::offer(const QList<QAction*>& onTheme, const QList<QAction*>& onStock) {
    themeMenu_.addSeparator();
    themeMenu_.addActions(onTheme);
    stockMenu_.addAction(chart_);
    stockMenu_.addSeparator();
    stockMenu_.addActions(onStock);
}

void Form38::readAgain() {
    begin(wanted_);
}

void Form38::begin(const QString& theme) {
    wanted_ = theme;
    runs_.stop();
    runs_.start([this](std::stop_token stop) { return read(stop); });
}

QCoro::Task<> Form38::read(std::stop_token stop) {
    const QString theme = wanted_;
    const auto job = [stores = environment_.stores, theme](const auto&) {
        return theme.isEmpty() ? readThemeBoxes(stores) : readStockBoxes(stores, theme);
    };
    const QList<MapBox> boxes = co_await inWorker(job, stop);
    showBoxes(boxes);
}

// A theme that has gone meanwhile leads back to all themes; the theme that is left is chosen there.
void Form38::showBoxes(const QList<MapBox>& boxes) {
    if (!wanted_.isEmpty() && boxes.isEmpty()) {
        begin({});
        return;
    }
    const QString left = std::exchange(theme_, wanted_);
    ui_->map->setHint(u"还没有主题\n\n用“数据 / 导入主题”或“主题 / 导入概念板块”导入"_s);
    ui_->map->showBoxes(boxes, theme_.isEmpty() ? themesKind : stocksKind);
    if (theme_.isEmpty() && !left.isEmpty()) {
        ui_->map->chooseKey(left);
    }
    showPlace(boxes);
    showChosen();
}

void Form38::showPlace(const QList<MapBox>& boxes) {
    const bool isTheme = !theme_.isEmpty();
    ui_->Combo1->setItemText(static_cast<int>(MapArea::members), isTheme ? u"一样大"_s : u"只数"_s);
    ui_->Combo1->setItemText(static_cast<int>(MapArea::attention),
                             isTheme ? u"相关度"_s : u"关注度"_s);
    const MapArea by = ui_->map->area();
    const auto left =
        std::ranges::count_if(boxes, [by](const MapBox& it) { return !(it.area(by) > 0); });
    const QString unit = isTheme ? u"只"_s : u"个"_s;
    QString words = isTheme ? u"全部主题 › "_s + shortened(theme_, longestName) : u"全部主题"_s;
    words += u"　%1 %2"_s.arg(boxes.size()).arg(unit);
    if (left > 0) {
        words += u"，其中 %1 %2没有%3，不画"_s.arg(left).arg(unit, ui_->Combo1->currentText());
    }
    ui_->place->setText(words);
    ui_->Command1->setEnabled(isTheme);
    chart_->setEnabled(isTheme);
    ui_->legend->setText(legendWords(isTheme ? stocksKind : themesKind));
}

void Form38::showChosen() {
    const MapView& map = *ui_->map;
    const MapBox* box = map.chosenBox();
    ui_->chosen->setText(box ? shortened(box->name, longestShownName) + u"　"_s +
                                   map.wordsOf(map.chosen())
                             : u"方向键选择，回车进入，直接输入名称或声母查找"_s);
    ui_->Command2->setEnabled(box || !theme_.isEmpty());
}

// Other windows take the current ones over and empty them.
void Form38::takeChosen() {
    const MapBox* box = ui_->map->chosenBox();
    const bool isTheme = theme_.isEmpty() && box;
    const QString theme = trimBlanks(isTheme ? box->key : theme_);
    if (!theme.isEmpty()) {
        environment_.globals.dangqianzhuti = theme;
    }
    if (isTheme) {
        emit themeChosen(theme);
    } else if (box) {
        environment_.globals.dangqiandm = box->key;
        environment_.globals.dangqianjc = box->name;
    }
}

void Form38::Map_Opened() {
    const MapBox* box = ui_->map->chosenBox();
    if (!box) {
        return;
    }
    if (theme_.isEmpty()) {
        begin(box->key);
    } else {
        takeChosen();
        windows_.openAnew<Form21>();
    }
}

void Form38::goBack() {
    if (!wanted_.isEmpty()) {
        begin({});
    }
}

// As from the row of a grid: the chart goes through all stocks that the map shows.
void Form38::openChart() {
    const MapView& map = *ui_->map;
    QList<StockOfRow> stocks;
    for (const MapBox& it : map.boxes()) {
        stocks << StockOfRow{.row = static_cast<int>(stocks.size()) + 1, .dm = it.key, .day = {}};
    }
    if (!theme_.isEmpty() && map.chosen() >= 0) {
        windows_.raiseOrOpen<Form36>();
        environment_.openWindows.find<Form36>()->walkThrough(stocks, map.chosen());
    }
}

void Form38::Map_MenuAsked(const QPoint& place) {
    takeChosen();
    if (theme_.isEmpty()) {
        themeMenu_.popup(place);
    } else {
        emit stockMenuOpens();
        stockMenu_.popup(place);
    }
}

}  // namespace guanchao
