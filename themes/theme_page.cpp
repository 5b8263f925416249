#include "themes/theme_page.h"

#include <QShortcut>
#include <algorithm>
#include <cmath>

#include "articles/form26.h"
#include "articles/form27.h"
#include "base/short_amounts.h"
#include "base/values.h"
#include "base/worker.h"
#include "frame/sheets.h"
#include "heat/form25.h"
#include "market/form21.h"
#include "monitor/form4.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "research/form24.h"
#include "services/stock_code.h"
#include "store/failure.h"
#include "themes/gain_bar.h"
#include "ui_theme_page.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Of a gain that is not known.
const QString noGain = u"–"_s;
constexpr qsizetype longestName = 30;

QString coloured(double gain, const QPalette& palette) {
    const QColor colour = readableColour(QColor::fromRgb(gain < 0 ? fallColour : riseColour),
                                         palette.color(QPalette::Window));
    return u"<span style=\"color:%1\">%2</span>"_s.arg(colour.name(), gainWords(gain));
}

}  // namespace

ThemePage::ThemePage(Environment& environment, Windows& windows)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::ThemePage>()),
      runs_(environment.failures),
      historyRuns_(environment.failures) {
    ui_->setupUi(this);
    ui_->news->setHint(u"近 %1 天没有采集过它的新闻"_s.arg(newsDays));
    for (QLabel* note : {ui_->membersNote, ui_->newsNote, ui_->articlesNote, ui_->monitorsNote}) {
        note->hide();
    }
    setUpGrids();
    connectControls();
    showTheme(environment.globals.dangqianzhuti);
}

ThemePage::~ThemePage() = default;

void ThemePage::setUpGrids() {
    stockMenu_.setObjectName(u"stockMenu"_s);
    struct Grid {
        GridView& view;
        ResultGrid& grid;
        QString hint;
    };
    for (const Grid& it : {Grid{*ui_->MSHFlexGrid1, members_, u"还没有个股"_s},
                           Grid{*ui_->MSHFlexGrid2, articles_, u"还没有这个主题的文章"_s},
                           Grid{*ui_->MSHFlexGrid3, monitors_, u"还没有监控"_s}}) {
        it.view.setGrid(it.grid);
        it.view.fillWithLastColumn();
        it.view.setSortable({u"日期"_s, u"时间"_s});
        it.view.allowExport(environment_.dialogs, environment_.failures);
        it.view.setHint(it.hint);
    }
    ui_->MSHFlexGrid1->setItemDelegateForColumn(memberBarColumn, new GainBar(this));
}

template <typename Form>
void ThemePage::opens(const QPushButton& button) {
    connect(&button, &QPushButton::clicked, this, [this] {
        environment_.globals.dangqianzhuti = theme_;
        windows_.openAnew<Form>();
    });
}

void ThemePage::connectControls() {
    opens<Form24>(*ui_->Command1);
    opens<Form25>(*ui_->Command2);
    opens<Form4>(*ui_->Command4);
    connect(ui_->Command3, &QPushButton::clicked, this, [this] {
        environment_.globals.wenzhangdalei = u"主题"_s;
        environment_.globals.wenzhangxiaolei = theme_;
        windows_.openAnew<Form27>();
    });
    connect(ui_->Command5, &QPushButton::clicked, this, [this] {
        environment_.globals.bianjimoshi = 0;
        environment_.globals.dangqianzhuti = theme_;
        windows_.openAnew<Form8>();
    });
    connect(ui_->Command6, &QPushButton::clicked, this, &ThemePage::readAll);
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, &ThemePage::readAll);
    connect(ui_->Command7, &QPushButton::clicked, this, [this] { showTheme(QString(heir_)); });
    GridView& members = *ui_->MSHFlexGrid1;
    connect(&members, &GridView::rowChosen, this, &ThemePage::takeStock);
    const auto openStock = [this](int row) {
        takeStock(row);
        windows_.openAnew<Form21>();
    };
    connect(&members, &GridView::rowDoubleClicked, this, openStock);
    connect(&members, &GridView::enterPressed, this, openStock);
    connect(&stockMenu_, &QMenu::aboutToShow, this, &ThemePage::stockMenuOpens);
    connect(ui_->MSHFlexGrid2, &GridView::rowDoubleClicked, this, &ThemePage::openArticle);
    connect(ui_->MSHFlexGrid2, &GridView::enterPressed, this, &ThemePage::openArticle);
    connect(ui_->MSHFlexGrid3, &GridView::rowDoubleClicked, this, &ThemePage::openMonitor);
    connect(ui_->MSHFlexGrid3, &GridView::enterPressed, this, &ThemePage::openMonitor);
}

void ThemePage::offer(const QList<QAction*>& onStock) {
    stockMenu_.addActions(onStock);
    ui_->MSHFlexGrid1->setRowMenu(stockMenu_);
}

void ThemePage::showTheme(const QString& theme) {
    theme_ = theme;
    today_.reset();
    gains_.reset();
    codes_.clear();
    setWindowTitle(u"主题页——"_s + shortened(theme, longestShownName));
    ui_->theme->setText(theme.isEmpty() ? u"先在主窗口选一个主题"_s
                                        : shortened(theme, longestName));
    ui_->goneRow->hide();
    ui_->source->setText(u"正在读取历史涨幅…"_s);
    readAll();
    ui_->MSHFlexGrid1->setFocus();
}

void ThemePage::readAll() {
    readAgain();
    historyRuns_.stop();
    historyRuns_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const auto job = [stores = environment_.stores, theme = theme_](const auto&) {
            return readThemeGains(stores, theme);
        };
        try {
            gains_ = co_await inWorker(job, stop);
            ui_->source->setText(sourceWords(*gains_, environment_.clock.now().date()));
        } catch (const OperationError& failure) {
            ui_->source->setText(u"读不到历史涨幅："_s + failureReason(failure));
        }
        showGains();
    });
}

// A part that can't be read says why, beside the others.
template <typename Given>
void ThemePage::readPart(QLabel& note, std::function<Given()> read,
                         std::function<void(const Given&)> show) {
    runs_.start([&note, read, show](std::stop_token stop) -> QCoro::Task<> {
        const auto job = [read](const auto&) { return read(); };
        try {
            const Given given = co_await inWorker(job, stop);
            note.clear();
            show(given);
        } catch (const OperationError& failure) {
            note.setText(u"读不到："_s + failureReason(failure));
        }
        note.setVisible(!note.text().isEmpty());
    });
}

void ThemePage::readAgain() {
    runs_.stop();
    const Stores stores = environment_.stores;
    const QString theme = theme_;
    const QDate today = environment_.clock.now().date();
    readPart<ThemeMembers>(
        *ui_->membersNote,
        [stores, theme, codes = codes_] { return readThemeMembers(stores, theme, codes); },
        [this](const ThemeMembers& it) { showMembers(it); });
    readPart<QList<DayValues>>(
        *ui_->newsNote, [stores, theme, today] { return readThemeNews(stores, theme, today); },
        [this](const QList<DayValues>& it) { ui_->news->showDays(it); });
    readPart<QList<ThemeArticle>>(
        *ui_->articlesNote, [stores, theme] { return readThemeArticles(stores, theme); },
        [this](const QList<ThemeArticle>& it) { fillArticles(articles_, it); });
    readPart<QList<ThemeMonitor>>(
        *ui_->monitorsNote, [stores, theme] { return readThemeMonitors(stores, theme); },
        [this](const QList<ThemeMonitor>& it) { fillMonitors(monitors_, it); });
}

void ThemePage::showMembers(const ThemeMembers& members) {
    today_ = members.theme;
    fillMembers(members_, members.stocks);
    ui_->facts->setText(today_ ? themeWords(*today_).section(u'　', 1) : QString());
    showGains();
    if (!theme_.isEmpty() && !members.exists) {
        showGone(members.heirs);
        return;
    }
    ui_->goneRow->hide();
    codes_.clear();
    for (const MapBox& it : members.stocks) {
        codes_ << it.key;
    }
}

// Where its members are all together again, it has been renamed or merged.
void ThemePage::showGone(const QStringList& heirs) {
    heir_ = heirs.value(0);
    QString words =
        u"主题“%1”已经没有了：改了名称或被删除。"_s.arg(shortened(theme_, longestShownName));
    if (!heir_.isEmpty()) {
        words += u"它的股票现在都在主题“%1”里。"_s.arg(shortened(heir_, longestShownName));
    }
    ui_->gone->setText(words);
    ui_->Command7->setVisible(!heir_.isEmpty());
    ui_->goneRow->show();
}

void ThemePage::showGains() {
    QStringList shown;
    QStringList told;
    const auto add = [&](const QString& title, double gain) {
        const bool isKnown = !std::isnan(gain);
        shown << title + u"&nbsp;"_s + (isKnown ? coloured(gain, palette()) : noGain);
        told << title + u' ' + (isKnown ? gainWords(gain) : u"没有"_s);
    };
    add(u"今天"_s, today_ ? today_->gain : std::nan(""));
    for (qsizetype at = 0; at < std::ssize(gainSpans); ++at) {
        add(u"%1日"_s.arg(gainSpans[at]), gains_ ? gains_->spans[at].gain : std::nan(""));
    }
    ui_->gains->setText(shown.join(u"&nbsp;&nbsp;&nbsp; "_s));
    ui_->gains->setAccessibleName(told.join(u"，"_s));
}

void ThemePage::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        showGains();
    } else if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        readAgain();  // the user may come from an editor
    }
}

void ThemePage::takeStock(int row) {
    if (members_.isDataRow(row)) {
        environment_.globals.dangqianzhuti = theme_;
        environment_.globals.dangqiandm = members_.textMatrix(row, memberCodeColumn);
        environment_.globals.dangqianjc = members_.textMatrix(row, memberNameColumn);
    }
}

void ThemePage::openArticle(int row) {
    environment_.globals.dangqianwenzhang =
        static_cast<qint32>(articles_.number(row, articleIdColumn).value_or(0));
    windows_.openAnother<Form26>();
}

void ThemePage::openMonitor(int row) {
    Globals& globals = environment_.globals;
    const QString dm = monitors_.textMatrix(row, 1);
    globals.bianjimoshi = 1;
    if (isWholeCode(dm)) {
        globals.dangqiandm = dm;
        globals.dangqianjc = monitors_.textMatrix(row, 2);
        windows_.openAnew<Form7>();
    } else {
        globals.dangqianzhuti = theme_;
        windows_.openAnew<Form8>();
    }
}

}  // namespace guanchao
