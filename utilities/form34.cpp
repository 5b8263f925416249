#include "utilities/form34.h"

#include <QKeyEvent>
#include <QScopeGuard>
#include <algorithm>
#include <chrono>
#include <exception>

#include "base/run_note.h"
#include "base/time_left.h"
#include "collector/search_check.h"
#include "frame/practice_band.h"
#include "grid/colours.h"
#include "grid/table_columns.h"
#include "services/service_names.h"
#include "services/services_file.h"
#include "store/patience.h"
#include "ui_form34.h"
#include "utilities/service_checks.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int numberWidth = 600;
// What a test finds is in sight on a small screen with large letters.
const QList<TableColumn> columns = {{u"用途"_s, 1150},     {u"次序"_s, 600},     {u"网站"_s, 850},
                                    {u"网址"_s, 2800},     {u"状态"_s, 600},     {u"测试"_s, 4000},
                                    {u"最近应答"_s, 1900}, {u"最近失败"_s, 2900}};
constexpr int checkCol = 6;
constexpr int answeredCol = 7;
constexpr int failedCol = 8;

constexpr std::chrono::seconds betweenAges(1);

const QString standardQuestion =
    u"换成软件带的标准网站吗？您在 services.ini 里改过的都不再有效。\n"
    "马上生效，原来的文件留作 services.ini.以前。"_s;

}  // namespace

Form34::Form34(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      ui_(std::make_unique<Ui::Form34>()),
      questions_(environment.failures),
      tests_(environment.failures) {
    ui_->setupUi(this);
    ui_->MSHFlexGrid1->setGrid(grid_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    grid_.setKeyColumns({1, 3, 4});
    connectControls();
    showTesting(false);
    say({});
    readAnew();
    mark(entries_.first().section);
}

Form34::~Form34() = default;

void Form34::connectControls() {
    connect(ui_->MSHFlexGrid1, &GridView::rowChosen, this, &Form34::showMarked);
    connect(ui_->up, &QPushButton::clicked, this, [this] { move(true); });
    connect(ui_->down, &QPushButton::clicked, this, [this] { move(false); });
    connect(ui_->use, &QPushButton::clicked, this, &Form34::switchUse);
    connect(ui_->saveHost, &QPushButton::clicked, this, &Form34::saveHost);
    connect(ui_->host, &QLineEdit::textEdited, this, &Form34::keepTyped);
    connect(ui_->host, &QLineEdit::returnPressed, this, &Form34::saveHost);
    connect(ui_->standard, &QPushButton::clicked, this, [this] {
        if (!questions_.running()) {
            questions_.start([this](std::stop_token stop) { return takeStandard(stop); });
        }
    });
    connect(ui_->test, &QPushButton::clicked, this,
            [this] { tests_.start([this](std::stop_token stop) { return test(stop); }); });
    connect(ui_->close, &QPushButton::clicked, this, &QWidget::close);
    connect(ui_->stop, &QPushButton::clicked, this, [this] { tests_.stop(); });
    // A window that was closed is deleted a little later.
    connect(this, &QDialog::finished, this, [this] {
        tests_.stop();
        questions_.stop();
    });
    ages_.setParent(this);
    ages_.setObjectName(u"ages"_s);
    connect(&ages_, &QTimer::timeout, this, &Form34::showStates);
}

void Form34::showEvent(QShowEvent* event) {
    showStates();
    ages_.start(betweenAges);
    QDialog::showEvent(event);
}

void Form34::hideEvent(QHideEvent* event) {
    ages_.stop();
    QDialog::hideEvent(event);
}

void Form34::keyPressEvent(QKeyEvent* press) {
    if (press->key() == Qt::Key_Escape && tests_.running()) {
        tests_.stop();
    } else {
        QDialog::keyPressEvent(press);
    }
}

void Form34::readAnew() {
    showPractice(*ui_->practiceBand, environment_.servicesFile.inFile());
    entries_ = environment_.servicesFile.entries();
    const GridFill fill(grid_);
    beginTable(grid_, columns, entries_.size(), numberWidth);
    for (int row = 1; row <= entries_.size(); ++row) {
        fillRow(row, entries_[row - 1]);
    }
    showStates();
}

void Form34::fillRow(int row, const ServiceEntry& entry) {
    const auto first = std::ranges::find(entries_, entry.purpose, &ServiceEntry::purpose);
    const auto place = row - std::distance(entries_.begin(), first);
    grid_.setTextMatrix(row, 1, purposeName(entry.purpose));
    grid_.setTextMatrix(row, 2, hasOrder(entry.purpose) ? QString::number(place) : QString());
    grid_.setTextMatrix(row, 3, kindName(entry.service.kind));
    grid_.setTextMatrix(row, 4, entry.service.host);
    const QString use = entry.service.host.isEmpty() ? u"没有"_s : u"在用"_s;
    grid_.setTextMatrix(row, 5, entry.isUsed ? use : u"停用"_s);
    showCheck(row);
}

void Form34::showCheck(int row) {
    const ServiceEntry& entry = entries_[row - 1];
    grid_.setTextMatrix(row, checkCol, checkWords_.of(entry));
    grid_.setCellForeColor(row, checkCol, checkWords_.hasFailed(entry) ? riseColour : textColour);
}

// Only what has changed: it comes each second.
void Form34::showStates() {
    if (isMinimized()) {
        return;
    }
    const QDateTime now = environment_.clock.now();
    const auto show = [this](int row, int col, const QString& words) {
        if (grid_.textMatrix(row, col) != words) {
            grid_.setTextMatrix(row, col, words);
        }
    };
    for (int row = 1; row <= entries_.size(); ++row) {
        const ServiceWatch::State state = environment_.watch.stateOf(entries_[row - 1].service);
        show(row, answeredCol, ageWords(state.answered, now));
        show(row, failedCol, failureLine(state, now));
    }
    showDetails();
}

const ServiceEntry* Form34::marked() const {
    const int row = grid_.markedRow();
    return row > 0 && row <= entries_.size() ? &entries_[row - 1] : nullptr;
}

void Form34::mark(const QString& section) {
    const auto found = std::ranges::find(entries_, section, &ServiceEntry::section);
    if (found != entries_.end()) {
        grid_.biaoji(static_cast<int>(std::distance(entries_.begin(), found)) + 1);
    }
    showMarked();
}

void Form34::showMarked() {
    const ServiceEntry* entry = marked();
    const auto isBeside = [&](qsizetype step) {
        const qsizetype at = grid_.markedRow() - 1 + step;
        return entry && at >= 0 && at < entries_.size() && entries_[at].purpose == entry->purpose;
    };
    ui_->up->setEnabled(isBeside(-1));
    ui_->down->setEnabled(isBeside(1));
    ui_->use->setEnabled(entry);
    const bool isOff = entry && !entry->isUsed;
    ui_->use->setText(isOff ? u"启用(&O)"_s : u"停用(&O)"_s);
    ui_->use->setAccessibleName(isOff ? u"启用或停用"_s : u"停用或启用"_s);
    ui_->host->setEnabled(entry);
    const QString host =
        entry ? typedHosts_.value(serviceKey(*entry), entry->service.host) : QString();
    if (ui_->host->text() != host) {
        ui_->host->setText(host);
    }
    ui_->saveHost->setEnabled(entry);
    ui_->standard->setEnabled(!environment_.services.isPractice);
    showDetails();
}

// What doesn't find room in the row.
void Form34::showDetails() {
    const ServiceEntry* entry = marked();
    QString words;
    if (entry) {
        const int row = grid_.markedRow();
        const QString answered = grid_.textMatrix(row, answeredCol);
        const QString failed = grid_.textMatrix(row, failedCol);
        const QString found = checkWords_.of(*entry);
        words = purposeName(entry->purpose) + u"："_s +
                (answered.isEmpty() ? u"还没有应答过"_s : u"最近应答 "_s + answered) +
                (failed.isEmpty() ? QString() : u"；最近失败 "_s + failed) +
                (found.isEmpty() ? QString() : u"\n测试："_s + found);
    }
    if (ui_->details->text() != words) {
        ui_->details->setText(words);
    }
}

void Form34::move(bool up) {
    const ServiceEntry* entry = marked();
    if (!entry) {
        return;
    }
    const QString neighbour = entries_.value(grid_.markedRow() - 1 + (up ? -1 : 1)).section;
    if (environment_.servicesFile.move(entry->section, up)) {
        readAnew();
        mark(neighbour);
    }
}

void Form34::switchUse() {
    if (const ServiceEntry* entry = marked()) {
        const QString section = entry->section;
        environment_.servicesFile.setUsed(section, !entry->isUsed);
        readAnew();
        mark(section);
    }
}

void Form34::keepTyped(const QString& host) {
    if (const ServiceEntry* entry = marked()) {
        typedHosts_[serviceKey(*entry)] = host;
    }
}

void Form34::saveHost() {
    if (const ServiceEntry* entry = marked()) {
        const QString section = entry->section;
        const QString key = serviceKey(*entry);
        environment_.servicesFile.setHost(section, ui_->host->text());
        typedHosts_.remove(key);
        readAnew();
        mark(section);
    }
}

QCoro::Task<> Form34::takeStandard(std::stop_token stop) {
    const bool wanted = co_await environment_.dialogs.ask(stop, standardQuestion);
    if (wanted) {
        environment_.servicesFile.takeStandard();
        typedHosts_.clear();
        readAnew();
        mark(entries_.first().section);
    }
}

QCoro::Task<> Form34::test(std::stop_token stop) {
    RunNote note(u"测试各个网站"_s, stop);
    showTesting(true);
    QString ending = u"测试停止了：%1"_s;
    const auto end = qScopeGuard([&] {
        showTesting(false);
        say(ending.arg(checkWords_.sum()));
    });
    checkWords_ = {};
    readAnew();
    CheckRun run(
        environment_.client, environment_.clock, betweenChecks,
        [this](const CheckRow& row) { showFound(row); },
        [this](const Check& check, const Service& service, const CheckStep& step) {
            showBegun(check, service, step);
        });
    QList<Check> checks = serviceChecks(environment_.services);
    const auto read = [this] {
        return searchCheck(environment_.services, environment_.stores.heat,
                           environment_.applicationFolder, environment_.clock);
    };
    std::exception_ptr noSite;  // a search address that is none is told when the others are asked
    try {
        const Check site = co_await patiently(read, stop);
        checks << site;
    } catch (const OperationError&) {
        noSite = std::current_exception();
    }
    co_await run.run(checks, stop);
    ending = u"测试完：%1"_s;
    if (noSite) {
        std::rethrow_exception(noSite);
    }
    note.ended();
}

void Form34::showTesting(bool testing) {
    ui_->test->setEnabled(!testing);
    ui_->stop->setVisible(testing);
}

void Form34::say(const QString& words) {
    ui_->step->setText(words);
    ui_->step->setVisible(!words.isEmpty());
}

void Form34::showBegun(const Check& check, const Service& service, const CheckStep& step) {
    say(u"正在问 %1 %2（%3 / %4，%5）"_s.arg(purposeName(check.purpose), service.host)
            .arg(step.asked + 1)
            .arg(step.total)
            .arg(atMostWords(step.atMost)));
}

void Form34::showFound(const CheckRow& found) {
    checkWords_.add(entriesOf(entries_, found.check, found.service), found);
    for (int row = 1; row <= entries_.size(); ++row) {
        showCheck(row);
    }
    showStates();
}

}  // namespace guanchao
