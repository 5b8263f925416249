#include "market/form36.h"

#include <algorithm>
#include <utility>

#include "base/values.h"
#include "services/stock_code.h"
#include "store/patience.h"
#include "ui_form36.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int mostCandidates = 30;

}  // namespace

Form36::Form36(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form36>()),
      runs_(environment.failures) {
    ui_->setupUi(this);
    ui_->candles->serve(environment);
    picker_ = new PickerBox(*ui_->Text7, *ui_->List1, environment.stores.main, this);
    picker_->showAtMost(mostCandidates);
    connectControls();
    environment.globals.dangqianjc.clear();
    walkThrough({StockOfRow{0, std::exchange(environment.globals.dangqiandm, {})}}, 0);
}

Form36::~Form36() = default;

void Form36::connectControls() {
    connect(ui_->Command1, &QPushButton::clicked, this, &Form36::Command1_Click);
    connect(picker_, &PickerBox::chosen, this, &Form36::Command1_Click);
    connect(ui_->previous, &QPushButton::clicked, this, [this] { step(-1); });
    connect(ui_->next, &QPushButton::clicked, this, [this] { step(1); });
}

void Form36::Command1_Click() {
    picker_->takeFirst();
    walkThrough({StockOfRow{0, trimBlanks(ui_->Text7->text()).toUpper()}}, 0);
}

void Form36::walkThrough(const QList<StockOfRow>& stocks, qsizetype chosen) {
    stocks_ = stocks;
    at_ = chosen;
    step(0);
    ui_->candles->chart().setFocus();
}

void Form36::step(qsizetype by) {
    at_ = std::clamp<qsizetype>(at_ + by, 0, stocks_.size() - 1);
    showStock(stocks_[at_]);
    ui_->previous->setEnabled(at_ > 0);
    ui_->next->setEnabled(at_ + 1 < stocks_.size());
    ui_->place->setText(stocks_.size() > 1 ? u"%1 / %2"_s.arg(at_ + 1).arg(stocks_.size())
                                           : QString());
}

void Form36::showStock(const StockOfRow& stock) {
    const QString dm = stock.dm;
    picker_->putText(dm);
    setWindowTitle(u"K线图"_s);
    ui_->name->clear();
    runs_.stop();
    if (isWholeCode(dm)) {
        runs_.start([this, dm](std::stop_token stop) { return showName(dm, stop); });
        ui_->candles->showStock(dm, stock.day);
    } else {
        ui_->candles->showStock({});
        if (!dm.isEmpty()) {
            ui_->candles->chart().setHint(u"没有代码 "_s + shortened(dm, longestShownName));
        }
    }
}

QCoro::Task<> Form36::showName(QString dm, std::stop_token stop) {
    const auto read = [this, dm] {
        Connection store = environment_.stores.main.open();
        return shortName(store, dm).value_or(dm);
    };
    const QString name = co_await patiently(read, stop);
    ui_->name->setText(shortened(name, longestShownName));
    setWindowTitle(u"K线图——"_s + shortened(name, longestShownName));
}

void Form36::reject() {
    if (ui_->candles->isReading()) {
        ui_->candles->stop();
    } else {
        QDialog::reject();
    }
}

}  // namespace guanchao
