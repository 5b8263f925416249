#include "monitor/form8.h"

#include "monitor/editor_window.h"
#include "ui_form8.h"

namespace guanchao {

Form8::Form8(Environment& environment, Windows& windows)
    : environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form8>()),
      editor_(environment.stores, environment.globals, environment.dialogs),
      runs_(environment.failures) {
    ui_->setupUi(this);
    connect(ui_->Command1, &QPushButton::clicked, this, &Form8::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form8::close);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form8::Command3_Click);
    Form_Load();
}

Form8::~Form8() = default;

void Form8::Form_Load() {
    const MonitorFields fields = editor_.load();
    setWindowTitle(editor_.caption());
    ui_->Text1->setText(fields.name);
    ui_->Combo1->setCurrentText(fields.bijiaofu);
    ui_->Text2->setText(fields.baojinzhi);
    ui_->Check1->setChecked(fields.tanchuform);
    ui_->Text3->setText(fields.yinyue);
}

MonitorFields Form8::fields() const {
    MonitorFields fields;
    fields.name = ui_->Text1->text();
    fields.bijiaofu = ui_->Combo1->currentText();
    fields.baojinzhi = ui_->Text2->text();
    fields.tanchuform = ui_->Check1->isChecked();
    fields.yinyue = ui_->Text3->text();
    return fields;
}

void Form8::Command1_Click() {
    confirmMonitor(*this, editor_, fields(), windows_);
}

void Form8::Command3_Click() {
    runs_.start([this](std::stop_token stop) {
        return pickSoundInto(*ui_->Text3, environment_.dialogs, stop);
    });
}

}  // namespace guanchao
