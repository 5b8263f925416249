#include "exchange/form3.h"

#include <utility>

#include "base/values.h"
#include "frame/file_field.h"
#include "frame/run_share.h"
#include "frame/told_role.h"
#include "platform/home_places.h"
#include "ui_form3.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form3::Form3(Environment& environment, Windows&)
    : environment_(environment),
      ui_(std::make_unique<Ui::Form3>()),
      run_([this](const ShownExchange& it) { showRun(it); }),
      themeImport_(environment.stores, environment.clock, environment.dialogs, run_,
                   environment.removals, environment.edits),
      textImport_(environment.stores, environment.clock, environment.dialogs, run_),
      runs_(environment.failures) {
    ui_->setupUi(this);
    prepareControls();
    connectControls();
    undoLine_ = std::make_unique<UndoLine>(*ui_->removedWords, *ui_->undo, environment_,
                                           importWindowPlace, [this] { emit imported(); });
}

Form3::~Form3() = default;

void Form3::prepareControls() {
    const QString folder = homePath(HomePlace::exportFolder);
    ui_->Text1->setText(folder + u"zhutibackup.ztb"_s);
    ui_->Text4->setText(folder + u"主题投资.txt"_s);
    for (QComboBox* box : {ui_->Combo1, ui_->Combo2}) {
        box->addItems(separatorEntries());
        // A typed separator must stay as typed.
        box->setCompleter(nullptr);
    }
    ui_->MSHFlexGrid1->setGrid(preview_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid1->setHint(u"点“预   览”，这里列出第一行的结果"_s);
    ui_->progress->hide();
    ui_->stopRun->hide();
    stopKey_.setEnabled(false);
    ui_->Label11->setEnabled(!environment_.services.vendor.host.isEmpty());
}

void Form3::connectControls() {
    connect(ui_->Option2, &QRadioButton::toggled, this, &Form3::Option_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form3::Command2_Click);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form3::Command3_Click);
    connect(ui_->Command4, &QPushButton::clicked, this, &Form3::Command4_Click);
    connect(ui_->Command5, &QPushButton::clicked, this, &Form3::Command5_Click);
    connect(ui_->Command6, &QPushButton::clicked, this, &Form3::Command6_Click);
    connect(ui_->Command7, &QPushButton::clicked, this, &Form3::Command7_Click);
    connect(ui_->Command8, &QPushButton::clicked, this, &Form3::Command8_Click);
    connect(ui_->stopRun, &QPushButton::clicked, this, [this] { run_.stop(); });
    connect(&stopKey_, &QShortcut::activated, this, [this] { run_.stop(); });
    connect(ui_->Label11, &QLabel::linkActivated, this, &Form3::Label11_Click);
    tellRole(*ui_->Label11, QAccessible::Link, [this] { Label11_Click(); });
}

void Form3::Option_Click() {
    ui_->Label8->setText(ui_->Option2->isChecked() ? u"第二部分都是主题名"_s
                                                   : u"第二部分都是代码"_s);
}

void Form3::Command2_Click() {
    runImport(*ui_->Command2, [this](std::stop_token stop) {
        return themeImport_.importLibrary(ui_->Text1->text(), stop);
    });
}

void Form3::Command3_Click() {
    ui_->Label1->setText(textImport_.preview(textSource(), preview_));
}

void Form3::Command4_Click() {
    runImport(*ui_->Command4,
              [this](std::stop_token stop) { return textImport_.importText(textSource(), stop); });
}

void Form3::Command5_Click() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        co_await themeImport_.deleteAll(stop);
        undoLine_->showLast();
        emit imported();
    });
}

void Form3::Command6_Click() {
    pickInto(*ui_->Text4, u"请选择主题txt文件"_s, u"主题投资.txt"_s);
}

void Form3::Command7_Click() {
    environment_.shell.open(environment_.globals.yingyongmulu + u"主题txt文件示例.txt"_s);
}

void Form3::Command8_Click() {
    pickInto(*ui_->Text1, u"请选择主题库文件"_s, u"zhutibackup.ztb"_s);
}

void Form3::pickInto(QLineEdit& field, const QString& title, const QString& file) {
    runs_.start([this, &field, title, file](std::stop_token stop) {
        return pickFileInto(field, environment_.dialogs, title, file, stop);
    });
}

void Form3::Label11_Click() {
    environment_.shell.open(environment_.services.vendor.host + u"/chaoxin/zhutiluntan.htm"_s);
}

TextSource Form3::textSource() const {
    return {ui_->Text4->text(), ui_->Option2->isChecked(), ui_->Combo1->currentText(),
            ui_->Combo2->currentText()};
}

// A second run is refused, and must leave the first its button.
void Form3::runImport(QPushButton& button, const Runs::Job& job) {
    if (!run_.running()) {
        runButton_ = &button;
    }
    runs_.start([this, job](std::stop_token stop) -> QCoro::Task<> {
        co_await job(stop);
        emit imported();
    });
}

void Form3::showRun(const ShownExchange& run) {
    runButton_->setEnabled(!run.running);
    stopKey_.setEnabled(run.running);
    ui_->stopRun->setVisible(run.running);
    ui_->progress->setVisible(run.running);
    ui_->Label1->setText(shortened(run.progress.jc, longestShownName));
    showShare(*ui_->progress, run.progress.done, run.progress.total, run.timeLeft);
}

}  // namespace guanchao
