#include "monitor/form7.h"

#include "monitor/editor_window.h"
#include "ui_form7.h"

namespace guanchao {

Form7::Form7(Environment& environment, Windows& windows)
    : environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form7>()),
      editor_(environment.stores, environment.globals, environment.dialogs),
      runs_(environment.failures) {
    ui_->setupUi(this);
    picker_ = new PickerBox(*ui_->Text1, *ui_->List1, environment_.stores.main, this);
    connect(picker_, &PickerBox::chosen, this, &Form7::List1_Click);
    connect(ui_->Command1, &QPushButton::clicked, this, &Form7::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form7::close);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form7::Command3_Click);
    Form_Load();
}

Form7::~Form7() = default;

void Form7::Form_Load() {
    const MonitorFields fields = editor_.load();
    setWindowTitle(editor_.caption());
    ui_->Text1->setText(fields.name);
    ui_->Text4->setText(fields.jc);
    ui_->Combo2->setCurrentText(fields.leixin);
    ui_->Combo1->setCurrentText(fields.bijiaofu);
    ui_->Text2->setText(fields.baojinzhi);
    ui_->Check1->setChecked(fields.tanchuform);
    ui_->Text3->setText(fields.yinyue);
    picker_->hideList();
}

MonitorFields Form7::fields() const {
    MonitorFields fields;
    fields.name = ui_->Text1->text();
    fields.leixin = ui_->Combo2->currentText();
    fields.bijiaofu = ui_->Combo1->currentText();
    fields.baojinzhi = ui_->Text2->text();
    fields.tanchuform = ui_->Check1->isChecked();
    fields.yinyue = ui_->Text3->text();
    return fields;
}

// The box already holds the code that was picked.
void Form7::List1_Click() {
    if (const std::optional<QString> jc = editor_.shortName(ui_->Text1->text())) {
        ui_->Text4->setText(*jc);
    }
}

void Form7::Command1_Click() {
    confirmMonitor(*this, editor_, fields(), windows_);
}

void Form7::Command3_Click() {
    runs_.start([this](std::stop_token stop) {
        return pickSoundInto(*ui_->Text3, environment_.dialogs, stop);
    });
}

}  // namespace guanchao
