#include "market/form21.h"

#include <QApplication>
#include <QTabBar>

#include "base/values.h"
#include "frame/sheets.h"
#include "market/form11.h"
#include "market/polled_day.h"
#include "ui_form21.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostCandidates = 30;

const QString noFigure = u"--"_s;
const QString loadingWords = u"正在读取…"_s;

void setColour(QLabel& label, Colour colour) {
    QPalette palette = label.palette();
    palette.setColor(
        QPalette::WindowText,
        readableColour(QColor::fromRgb(colour), QApplication::palette().color(QPalette::Window)));
    label.setPalette(palette);
}

void setPrice(QLabel& label, const PriceText& price) {
    label.setText(price.text);
    setColour(label, price.colour);
}

// As it stood before its first figure.
void clearFigure(QLabel& label) {
    label.setText(noFigure);
    label.setPalette({});
}

// A text that is missing leaves its label as it stands.
void setIfThere(QLabel& label, const std::optional<QString>& text) {
    if (text) {
        label.setText(*text);
    }
}

}  // namespace

Form21::Form21(Environment& environment, Windows& windows)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form21>()),
      quotes_(environment.globals, environment.clock, environment.client, environment.services,
              environment.meanVolume, environment.polledDay, environment.dialogs,
              environment.failures, environment.shell, *this) {
    ui_->setupUi(this);
    QTabBar* tabs = ui_->chartTabs->tabBar();
    tabs->setAccessibleName(ui_->chartTabs->accessibleName());
    setTabOrder(ui_->stopRun, tabs);
    setTabOrder(tabs, ui_->Picture1);
    ui_->candles->serve(environment);
    ui_->dayLine->setHint(
        u"今天还没有读到这只股票的行情\n\n分时(自绘)由软件自己读到的行情画成：F9、监控和这个窗口每读一次，就多一点"_s);
    asks_ = bookLabels(u"ask"_s);
    bids_ = bookLabels(u"bid"_s);
    setColour(*ui_->Label5, stockColour);
    picker_ = new PickerBox(*ui_->Text7, *ui_->List1, environment_.stores.main, this);
    picker_->showAtMost(mostCandidates);
    kuaimenu_.setObjectName(u"kuaimenu"_s);
    kuaimenu_.addActions({ui_->F10资料, ui_->刷新});
    connectControls();
    Form_Load();
}

Form21::~Form21() = default;

Form21::Book Form21::bookLabels(const QString& side) const {
    Book book;
    for (int level = 0; level < bookLevels; ++level) {
        const QString number = QString::number(level + 1);
        book[static_cast<size_t>(level)] = {findChild<QLabel*>(side + u"Price"_s + number),
                                            findChild<QLabel*>(side + u"Lots"_s + number)};
    }
    return book;
}

void Form21::connectControls() {
    connect(ui_->Command1, &QPushButton::clicked, this, &Form21::Command1_Click);
    connect(picker_, &PickerBox::chosen, this, &Form21::Command1_Click);
    connect(ui_->stopRun, &QPushButton::clicked, this, [this] { quotes_.stop(); });
    // Queued: a message may stand at the end, and the list is closed by then.
    connect(ui_->Combo1, &QComboBox::activated, this, &Form21::Combo1_Click, Qt::QueuedConnection);
    connect(ui_->Combo2, &QComboBox::activated, this, &Form21::Combo2_Click, Qt::QueuedConnection);
    connect(ui_->Picture1, &ChartBox::pressed, this, &Form21::Picture1_MouseDown);
    connect(ui_->Picture1, &ChartBox::clicked, this,
            [this] { quotes_.openIntradayPage(ui_->Text7->text()); });
    connect(ui_->Picture2, &ChartBox::clicked, this,
            [this] { quotes_.openDailyPage(ui_->Text7->text()); });
    connect(ui_->F10资料, &QAction::triggered, this, &Form21::F10资料_Click);
    connect(ui_->刷新, &QAction::triggered, &Timer1_, qOverload<>(&QTimer::start));
    connect(&environment_.polledDay, &PolledDay::noted, this, [this](const QString& dm) {
        if (dm == stock_) {
            showPolledLine();
        }
    });
    Timer1_.setParent(this);
    Timer1_.setObjectName(u"Timer1"_s);
    Timer1_.setInterval(500);
    Timer1_.setSingleShot(true);
    Timer2_.setParent(this);
    Timer2_.setObjectName(u"Timer2"_s);
    Timer2_.setInterval(4000);
    Timer2_.setSingleShot(true);
    connect(&Timer1_, &QTimer::timeout, this, &Form21::Timer1_Timer);
    connect(&Timer2_, &QTimer::timeout, this, &Form21::Timer2_Timer);
}

void Form21::Form_Load() {
    const LiveQuotes::Opening opening = quotes_.load();
    picker_->putText(opening.dm);
    ui_->Text7->setFocus();
    ui_->Text7->selectAll();
    ui_->Label5->setText(opening.jc);
    showState();
}

// The first requests wait until the window is on the screen.
void Form21::paintEvent(QPaintEvent* event) {
    QDialog::paintEvent(event);
    if (painted_) {
        return;
    }
    painted_ = true;
    QTimer::singleShot(0, this, [this] {
        Timer1_.start();
        quotes_.showOpeningFundamentals();
    });
}

void Form21::Command1_Click() {
    picker_->takeFirst();
    ui_->Text7->selectAll();
    quotes_.query(ui_->Text7->text());
}

void Form21::Combo1_Click() {
    quotes_.chooseHomeIndex(ui_->Combo1->currentIndex());
}

void Form21::Combo2_Click() {
    quotes_.chooseWorldIndex(ui_->Combo2->currentIndex());
}

void Form21::Picture1_MouseDown(Qt::MouseButton button, const QPoint& place) {
    picker_->hideList();
    if (button == Qt::RightButton) {
        environment_.globals.dangqiandm = trimBlanks(ui_->Text7->text());
        environment_.globals.dangqianjc = shownName();
        kuaimenu_.popup(place);
    }
}

QString Form21::shownName() const {
    const QString name = trimBlanks(ui_->Label5->text());
    return name == loadingWords ? QString() : name;
}

void Form21::F10资料_Click() {
    windows_.openAnew<Form11>();
}

// While a message stands it waits: it may have messages of its own. So it does while a code is
// being typed.
void Form21::Timer1_Timer() {
    if (QApplication::activeModalWidget() || picker_->listIsOpen()) {
        Timer1_.start();
        return;
    }
    picker_->takeFirst();
    ui_->Combo1->setCurrentIndex(0);
    ui_->Combo2->setCurrentIndex(0);
    quotes_.start(ui_->Text7->text());
}

void Form21::Timer2_Timer() {
    if (isActiveWindow()) {
        quotes_.poll();
    } else {
        Timer2_.start();
    }
}

void Form21::beginStock(const QString& dm) {
    stock_ = dm;
    ui_->candles->showStock(dm);
    showPolledLine();
}

void Form21::showPolledLine() {
    ui_->dayLine->showLine(environment_.polledDay.of(stock_));
}

void Form21::showFundamentals(const FundamentalTexts& texts) {
    ui_->reportDate->setText(texts.jzrq);
    ui_->earnings->setText(texts.mgsy);
    ui_->freeFloat->setText(texts.mqlt);
    ui_->netAssets->setText(texts.mgjzc);
}

void Form21::showChart(QuoteChart chart, const std::optional<QByteArray>& picture) {
    switch (chart) {
        case QuoteChart::intraday:
            ui_->Picture1->showPicture(picture);
            return;
        case QuoteChart::daily:
            ui_->Picture2->showPicture(picture);
            return;
        case QuoteChart::homeIndex:
            ui_->Picture5->showPicture(picture);
            return;
        case QuoteChart::worldIndex:
            ui_->Picture3->showPicture(picture);
    }
}

void Form21::clearStock() {
    clearFigures();
    showFundamentals({noFigure, noFigure, noFigure, noFigure});
    ui_->Label5->clear();
    ui_->Picture1->showPicture({});
    ui_->Picture2->showPicture({});
}

void Form21::clearFigures() {
    setWindowTitle(u"分时行情"_s);
    for (QLabel* label :
         {ui_->stockOpen, ui_->stockFormerClose, ui_->stockLatest, ui_->stockHigh, ui_->stockLow,
          ui_->stockGain, ui_->stockSwing, ui_->stockVolume, ui_->stockAmount, ui_->stockDay,
          ui_->stockTime, ui_->limitUp, ui_->limitDown, ui_->priceEarnings, ui_->turnoverRate,
          ui_->priceToBook, ui_->stockRatio}) {
        clearFigure(*label);
    }
    ui_->Label36->setPalette({});
    for (const Book& book : {asks_, bids_}) {
        for (const BookLabels& level : book) {
            clearFigure(*level.price);
            clearFigure(*level.lots);
        }
    }
}

void Form21::showStock(const StockPanel& panel) {
    ui_->Label5->setText(panel.name);
    setWindowTitle(panel.caption);
    ui_->stockFormerClose->setText(panel.prices.formerClose);
    setPrice(*ui_->stockOpen, panel.prices.open);
    setPrice(*ui_->stockLatest, panel.prices.latest);
    setPrice(*ui_->stockHigh, panel.prices.high);
    setPrice(*ui_->stockLow, panel.prices.low);
    ui_->stockGain->setText(panel.gain);
    setColour(*ui_->stockGain, panel.prices.colour);
    setColour(*ui_->Label36, panel.prices.colour);
    ui_->stockSwing->setText(panel.prices.swing);
    ui_->stockVolume->setText(panel.volume);
    ui_->stockAmount->setText(panel.amount);
    ui_->stockDay->setText(panel.day);
    ui_->stockTime->setText(panel.time);
    setPrice(*ui_->limitUp, panel.limitUp);
    setPrice(*ui_->limitDown, panel.limitDown);
    showBook(asks_, panel.asks);
    showBook(bids_, panel.bids);
    setIfThere(*ui_->priceEarnings, panel.priceEarnings);
    setIfThere(*ui_->turnoverRate, panel.turnoverRate);
    setIfThere(*ui_->priceToBook, panel.priceToBook);
    setIfThere(*ui_->stockRatio, panel.ratio);
}

void Form21::showBook(const Book& book, const std::array<BookLevel, bookLevels>& levels) {
    for (size_t level = 0; level < book.size(); ++level) {
        setPrice(*book[level].price, levels[level].price);
        book[level].lots->setText(levels[level].lots);
    }
}

void Form21::showNoStock(const QString& words) {
    clearFigures();
    ui_->Label5->setText(words);
}

void Form21::clearHomeIndex() {
    for (QLabel* label : {ui_->indexName, ui_->indexFormerClose, ui_->indexOpen, ui_->indexLatest,
                          ui_->indexHigh, ui_->indexLow, ui_->indexTime, ui_->indexVolume,
                          ui_->indexAmount, ui_->indexChange, ui_->indexGain, ui_->indexSwing}) {
        clearFigure(*label);
    }
    ui_->indexChangeCaption->setPalette({});
    ui_->indexGainCaption->setPalette({});
    ui_->Picture5->showPicture({});
}

void Form21::showHomeIndex(const HomeIndexPanel& panel) {
    ui_->indexName->setText(panel.name);
    ui_->indexFormerClose->setText(panel.prices.formerClose);
    setPrice(*ui_->indexOpen, panel.prices.open);
    setPrice(*ui_->indexLatest, panel.prices.latest);
    setPrice(*ui_->indexHigh, panel.prices.high);
    setPrice(*ui_->indexLow, panel.prices.low);
    ui_->indexTime->setText(panel.time);
    ui_->indexVolume->setText(panel.turnover.volume);
    ui_->indexAmount->setText(panel.turnover.amount);
    ui_->indexChange->setText(panel.change);
    ui_->indexGain->setText(panel.gain);
    for (QLabel* label :
         {ui_->indexChange, ui_->indexChangeCaption, ui_->indexGain, ui_->indexGainCaption}) {
        setColour(*label, panel.prices.colour);
    }
    ui_->indexSwing->setText(panel.prices.swing);
    setIfThere(*ui_->indexRatio, panel.ratio);
}

void Form21::showNoHomeIndex(const QString& words) {
    ui_->indexName->setText(words);
}

void Form21::clearWorldIndex() {
    for (QLabel* label : {ui_->worldName, ui_->worldIndex, ui_->worldChange, ui_->worldGain}) {
        clearFigure(*label);
    }
    ui_->Picture3->showPicture({});
}

void Form21::showWorldIndex(const WorldIndexPanel& panel) {
    ui_->worldName->setText(panel.name);
    ui_->worldIndex->setText(panel.index);
    setPrice(*ui_->worldChange, {panel.change, panel.colour});
    setPrice(*ui_->worldGain, {panel.gain, panel.colour});
}

// The place of a name that is not there says so.
void Form21::setLoading(QuotePart part, bool loading) {
    struct Place {
        QLabel& name;
        QString empty;
        QList<ChartBox*> charts;
    };
    const Place place =
        part == QuotePart::stock       ? Place{*ui_->Label5, {}, {ui_->Picture1, ui_->Picture2}}
        : part == QuotePart::homeIndex ? Place{*ui_->indexName, noFigure, {ui_->Picture5}}
                                       : Place{*ui_->worldName, noFigure, {ui_->Picture3}};
    if (place.name.text() == (loading ? place.empty : loadingWords)) {
        place.name.setText(loading ? loadingWords : place.empty);
    }
    for (ChartBox* chart : place.charts) {
        chart->setLoading(loading);
    }
    if (loading) {
        loading_.insert(part);
    } else {
        loading_.remove(part);
    }
    showState();
}

void Form21::setPolling(bool on, const QString& lack) {
    if (on) {
        Timer2_.start();
    } else {
        Timer2_.stop();
    }
    polling_ = on ? u"交易时段内每4秒更新"_s : u"更新已停止，点“查询”重新开始"_s;
    if (!lack.isEmpty()) {
        polling_.prepend(lack + u"；"_s);
    }
    showState();
}

void Form21::showState() {
    ui_->pollState->setText(loading_.isEmpty() ? polling_ : loadingWords);
    ui_->stopRun->setVisible(!loading_.isEmpty());
}

void Form21::reject() {
    if (loading_.isEmpty() && !ui_->candles->isReading()) {
        QDialog::reject();
    } else {
        ui_->candles->stop();
        quotes_.stop();
    }
}

}  // namespace guanchao
