#include "heat/heat_map_window.h"

#include <utility>

#include "base/activity.h"
#include "base/values.h"
#include "base/worker.h"
#include "heat/heat_map.h"
#include "store/store_error.h"
#include "ui_heat_map_window.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

struct HeatMapWindow::Reading {
    QList<QDate> days;
    ResultGrid map;
    DayOfNews news;
};

HeatMapWindow::HeatMapWindow(Environment& environment, HeatSubject subject)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      subject_(std::move(subject)),
      ui_(std::make_unique<Ui::HeatMapWindow>()) {
    ui_->setupUi(this);
    setWindowTitle(subject_.kind + u"热度图"_s);
    dressControls();
    connectControls();
    watch_ = std::make_unique<StoreWatch>(*this, environment.stores.heat, environment.failures,
                                          [this](std::stop_token stop) { return readAnew(stop); });
}

HeatMapWindow::~HeatMapWindow() = default;

void HeatMapWindow::dressControls() {
    for (const DayField& it : subject_.fields) {
        ui_->field->addItem(it.words);
    }
    ui_->map->setGrid(grid_);
    ui_->map->allowExport(environment_.dialogs, environment_.failures);
    ui_->map->setSortable();
    ui_->map->setHint(u"还没有采集到数量"_s);
    const bool haveGains = subject_.kind != u"商品"_s;
    ui_->tabs->setTabVisible(ui_->tabs->indexOf(ui_->newsPage), haveGains);
    showLegend();
    ui_->map->setFocus();
}

void HeatMapWindow::connectControls() {
    const auto ask = [this] {
        showLegend();
        watch_->readAnew();
    };
    connect(ui_->field, &QComboBox::activated, this, ask);
    connect(ui_->length, &QComboBox::activated, this, ask);
    connect(ui_->day, &QComboBox::activated, this, ask);
    const auto openRow = [this](int row) { emit itemOpened(grid_.textMatrix(row, mapItemColumn)); };
    connect(ui_->map, &GridView::rowDoubleClicked, this, openRow);
    connect(ui_->map, &GridView::enterPressed, this, openRow);
    connect(ui_->plot, &ScatterPlot::opened, this,
            [this](qsizetype thing) { emit itemOpened(items_[thing]); });
}

// The first entry of the days is the latest, whichever it is.
HeatMapWindow::Question HeatMapWindow::asked() const {
    constexpr int lengths[] = {30, 60, 90};
    const QDate day = ui_->day->currentIndex() > 0
                          ? QDate::fromString(ui_->day->currentText(), Qt::ISODate)
                          : QDate();
    return {ui_->field->currentIndex(), lengths[ui_->length->currentIndex()], day};
}

const DayField& HeatMapWindow::shownField() const {
    return subject_.fields[ui_->field->currentIndex()];
}

std::shared_ptr<HeatMapWindow::Reading> HeatMapWindow::read(const Stores& stores,
                                                            const HeatSubject& subject,
                                                            const Question& question) {
    const Activity activity(u"读取热度图"_s);
    const DayField& field = subject.fields[question.field];
    Connection heat = stores.heat.open();
    const HeatDays days = readHeatDays(heat, subject, field, question.calendarDays);
    auto reading = std::make_shared<Reading>();
    reading->days = days.days;
    fillHeatMap(days, subject, field, reading->map);
    if (!days.days.isEmpty()) {
        const bool isThere = days.days.contains(question.day);
        reading->news = newsAgainstGain(stores, subject, field, days,
                                        isThere ? question.day : days.days.last());
    }
    return reading;
}

QCoro::Task<> HeatMapWindow::readAnew(std::stop_token stop) {
    const auto job = [stores = environment_.stores, subject = subject_, question = asked()](
                         Work<std::monostate>&) { return read(stores, subject, question); };
    const std::shared_ptr<Reading> reading = co_await inWorker(job, stop);
    show(*reading);
}

void HeatMapWindow::show(Reading& reading) {
    {
        const GridFill fill(grid_, GridFill::Rows::ofTheSameList);
        grid_.swapTable(reading.map);
    }
    showDays(reading.days, reading.news.day);
    showNews(reading.news);
}

// A list that is open stays so.
void HeatMapWindow::showDays(const QList<QDate>& days, const QDate& shown) {
    QStringList texts;
    for (auto day = days.crbegin(); day != days.crend(); ++day) {
        texts << dateText(*day);
    }
    if (texts != days_) {
        days_ = texts;
        ui_->day->clear();
        ui_->day->addItems(texts);
        ui_->day->setCurrentText(dateText(shown));
    }
}

void HeatMapWindow::showLegend() {
    const DayField& field = shownField();
    if (field.isGrowth) {
        ui_->legend->setScale(true, u"-100%"_s, u"+100% 和更多"_s);
    } else if (subject_.kind == u"商品"_s) {
        ui_->legend->setScale(true, u"跌得最多"_s, u"涨得最多"_s);
    } else {
        ui_->legend->setScale(false, u"0"_s, u"这个"_s + subject_.kind + u"最多的一天"_s);
    }
    ui_->plot->setAxes(field.words,
                       field.isGrowth ? ScatterPlot::Scale::linear : ScatterPlot::Scale::ofCounts,
                       u"涨幅 %"_s);
}

void HeatMapWindow::showNews(const DayOfNews& news) {
    const DayField& field = shownField();
    QList<PlottedThing> things;
    items_.clear();
    for (const NewsAndGain& it : news.items) {
        const QString name = it.name.isEmpty() ? it.item : it.name + u' ' + it.item;
        const QString figure =
            (it.news.isLowerBound ? u"≥"_s : QString()) + numberText(it.news.value);
        things << PlottedThing{{it.news.value, it.gain},
                               name + u"  "_s + field.words + u' ' + figure + u"  涨幅 "_s +
                                   twoDecimals(it.gain) + u'%'};
        items_ << it.item;
    }
    ui_->line->setText(news.line);
    ui_->plot->setHint(news.line);
    ui_->plot->showThings(things);
}

}  // namespace guanchao
