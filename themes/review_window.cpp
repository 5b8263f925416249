#include "themes/review_window.h"

#include <QShortcut>
#include <chrono>

#include "base/values.h"
#include "base/worker.h"
#include "store/failure.h"
#include "store/patience.h"
#include "themes/theme_page.h"
#include "ui_review_window.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr std::chrono::milliseconds untilNoteIsSaved(800);
constexpr std::chrono::seconds untilNoteIsTriedAgain(5);
constexpr int lineTwips = 1100;

QString dayWords(const QDate& day, const ReviewData& data) {
    static const QStringList weekdays = {u"一"_s, u"二"_s, u"三"_s, u"四"_s,
                                         u"五"_s, u"六"_s, u"日"_s};
    QString words = day.toString(Qt::ISODate) + u" 星期"_s + weekdays[day.dayOfWeek() - 1];
    if (day == data.day.day && !data.rows.isEmpty() && !data.isInBook) {
        words += u"（现算）"_s;
    }
    return data.notes.contains(day) ? words + u"　有备注"_s : words;
}

// By the entries of the box.
std::optional<Standing> standingAt(int index) {
    return index > 0 ? std::optional(static_cast<Standing>(index - 1)) : std::nullopt;
}

}  // namespace

ReviewWindow::ReviewWindow(Environment& environment, Windows& windows)
    : AskingWindow(Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::ReviewWindow>()),
      noteRests_(this),
      runs_(environment.failures),
      saves_(environment.failures) {
    ui_->setupUi(this);
    noteRests_.setObjectName(u"noteRests"_s);
    noteRests_.setSingleShot(true);
    setUpGrid();
    connectControls();
    readAgain();
    ui_->MSHFlexGrid1->setFocus();
}

ReviewWindow::~ReviewWindow() = default;

void ReviewWindow::setUpGrid() {
    GridView& view = *ui_->MSHFlexGrid1;
    grid_.setKeyColumns({reviewThemeColumn, reviewThemeColumn - 1});
    view.setGrid(grid_);
    view.setSortable();
    view.allowExport(environment_.dialogs, environment_.failures);
    view.setHint(u"这一天没有主题可列"_s);
    view.fillWithLastColumn();
    lines_ = new SparklineDelegate(themeColour, lineTwips, this);
    view.setItemDelegateForColumn(reviewThemeColumn, lines_);
    themeMenu_.setObjectName(u"themeMenu"_s);
    ui_->parts->setSizes({520, 120});
    ui_->parts->setStretchFactor(0, 1);
}

void ReviewWindow::connectControls() {
    GridView& view = *ui_->MSHFlexGrid1;
    const auto openPage = [this] {
        if (grid_.isDataRow(grid_.markedRow())) {
            windows_.openAnew<ThemePage>();
        }
    };
    connect(&view, &GridView::rowChosen, this, [this](int row) {
        if (grid_.isDataRow(row)) {
            environment_.globals.dangqianzhuti =
                trimBlanks(grid_.textMatrix(row, reviewThemeColumn));
        }
    });
    connect(&view, &GridView::rowDoubleClicked, this, openPage);
    connect(&view, &GridView::enterPressed, this, openPage);
    connect(ui_->Command1, &QPushButton::clicked, this, openPage);
    connect(ui_->Command2, &QPushButton::clicked, this, &ReviewWindow::readAgain);
    connect(ui_->Command3, &QPushButton::clicked, this, &ReviewWindow::findNote);
    connect(ui_->Text1, &QLineEdit::returnPressed, this, &ReviewWindow::findNote);
    connect(ui_->Combo1, &QComboBox::activated, this, &ReviewWindow::takeDay);
    connect(ui_->Combo2, &QComboBox::currentIndexChanged, this, &ReviewWindow::showRows);
    connect(ui_->note, &QPlainTextEdit::textChanged, this, [this] {
        ui_->noteState->setText(isSaved() ? QString() : u"还没有保存"_s);
        noteRests_.start(untilNoteIsSaved);
    });
    connect(&noteRests_, &QTimer::timeout, this, &ReviewWindow::saveNote);
    connect(new QShortcut(Qt::Key_F5, this), &QShortcut::activated, this, &ReviewWindow::readAgain);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        ui_->Text1->setFocus();
        ui_->Text1->selectAll();
    });
}

void ReviewWindow::offer(const QList<QAction*>& onTheme) {
    themeMenu_.addActions(onTheme);
    ui_->MSHFlexGrid1->setRowMenu(themeMenu_);
}

void ReviewWindow::readAgain() {
    runs_.stop();
    runs_.start([this](std::stop_token stop) { return read(stop); });
}

QCoro::Task<> ReviewWindow::read(std::stop_token stop) {
    const auto job = [stores = environment_.stores, wanted = wanted_](const auto&) {
        return readReview(stores, wanted);
    };
    try {
        const ReviewData given = co_await inWorker(job, stop);
        showData(given);
    } catch (const OperationError& failure) {
        ui_->state->setText(u"读不到："_s + failureReason(failure));
    }
}

void ReviewWindow::showData(const ReviewData& given) {
    data_ = given;
    showDays();
    ui_->state->setText(reviewWords(data_));
    showRows();
    showNote();
}

void ReviewWindow::showDays() {
    const QSignalBlocker quiet(ui_->Combo1);
    ui_->Combo1->clear();
    for (const QDate& day : data_.days) {
        ui_->Combo1->addItem(dayWords(day, data_), day);
    }
    ui_->Combo1->setCurrentIndex(static_cast<int>(data_.days.indexOf(data_.day.day)));
}

void ReviewWindow::showRows() {
    QHash<QString, QList<double>> lines;
    for (const ReviewRow& it : data_.rows) {
        lines.insert(it.day.theme, it.line);
    }
    lines_->setLines(lines);
    grid_.setItemNotes(lineNotes(data_.rows));
    fillReview(grid_, data_, standingAt(ui_->Combo2->currentIndex()));
}

// What is being typed stays.
void ReviewWindow::showNote() {
    ui_->note->setEnabled(data_.day.day.isValid());
    if (noteOf_ == data_.day.day && !isSaved()) {
        return;
    }
    noteOf_ = data_.day.day;
    const QString note = data_.notes.value(noteOf_);
    if (trimBlanks(ui_->note->toPlainText()) != note) {
        const QSignalBlocker quiet(ui_->note);
        ui_->note->setPlainText(note);
    }
    ui_->noteState->clear();
}

void ReviewWindow::takeDay() {
    // Before the note: once that is saved, the box is filled anew.
    wanted_ = ui_->Combo1->currentData().toDate();
    saveNote();
    // Of the newest day the window goes on to the next one by itself.
    if (wanted_ == data_.days.value(0)) {
        wanted_ = {};
    }
    readAgain();
}

bool ReviewWindow::isSaved() const {
    return !noteOf_.isValid() || trimBlanks(ui_->note->toPlainText()) == data_.notes.value(noteOf_);
}

void ReviewWindow::saveNote() {
    noteRests_.stop();
    if (!isSaved()) {
        const QString note = trimBlanks(ui_->note->toPlainText());
        saves_.start(
            [this, day = noteOf_, note](std::stop_token stop) { return save(day, note, stop); });
    }
}

QCoro::Task<> ReviewWindow::save(QDate day, QString note, std::stop_token stop) {
    const auto step = [this, day, note] { writeDayNote(environment_.stores.main, day, note); };
    try {
        co_await patiently(step, stop);
    } catch (const OperationError& failure) {
        ui_->noteState->setText(u"还没有保存，5 秒后自动再试："_s + failureReason(failure));
        noteRests_.start(untilNoteIsTriedAgain);
        co_return;
    }
    if (note.isEmpty()) {
        data_.notes.remove(day);
    } else {
        data_.notes.insert(day, note);
    }
    if (!data_.days.contains(day)) {
        readAgain();
    }
    showDays();
    if (isSaved()) {
        ui_->noteState->setText(u"已保存"_s);
    }
}

void ReviewWindow::reject() {
    noteRests_.stop();
    if (!isSaved()) {
        try {
            writeDayNote(environment_.stores.main, noteOf_, ui_->note->toPlainText());
            data_.notes.insert(noteOf_, trimBlanks(ui_->note->toPlainText()));
        } catch (const OperationError& failure) {
            environment_.failures.report(failure);
            emit stays();
            return;
        }
    }
    QDialog::reject();
}

void ReviewWindow::findNote() {
    const QString text = trimBlanks(ui_->Text1->text());
    if (text.isEmpty()) {
        ui_->Text1->setFocus();
        return;
    }
    saveNote();
    const QDate day = nextNoteWith(data_, text, data_.day.day);
    if (!day.isValid()) {
        ui_->noteState->setText(u"各天的备注里没有“%1”"_s.arg(shortened(text, longestShownName)));
        return;
    }
    if (day == data_.day.day) {
        ui_->noteState->setText(u"只有这一天的备注里有"_s);
        return;
    }
    ui_->Combo1->setCurrentIndex(static_cast<int>(data_.days.indexOf(day)));
    takeDay();
}

}  // namespace guanchao
