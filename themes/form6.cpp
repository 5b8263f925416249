#include "themes/form6.h"

#include <QKeyEvent>

#include "ui_form6.h"

namespace guanchao {

Form6::Form6(Environment& environment, Windows&)
    : ui_(std::make_unique<Ui::Form6>()),
      editing_(environment.stores, environment.clock, environment.dialogs, environment.edits),
      runs_(environment.failures) {
    ui_->setupUi(this);
    ui_->Text1->setPlaceholderText(sampleCodes);
    ui_->Text1->installEventFilter(this);
    ui_->Text1->viewport()->installEventFilter(this);
    connect(ui_->Command1, &QPushButton::clicked, this, &Form6::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form6::Command2_Click);
    Form_Load(environment.globals.dangqianzhuti);
}

Form6::~Form6() = default;

void Form6::Form_Load(const QString& theme) {
    const ThemeFields fields = editing_.open(theme);
    ui_->Text2->setText(fields.name);
    ui_->Text1->setPlainText(fields.codes);
    ui_->Text3->setText(fields.attention);
}

void Form6::Text1_Click() {
    const QString codes = ui_->Text1->toPlainText();
    const QString kept = withoutSample(codes);
    if (kept != codes) {
        ui_->Text1->setPlainText(kept);
    }
}

void Form6::Command1_Click() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const ThemeFields typed = fields();
        const bool added = co_await editing_.add(typed, stop);
        if (added) {
            close();
        }
    });
}

void Form6::Command2_Click() {
    if (editing_.rewrite(fields())) {
        close();
    }
}

ThemeFields Form6::fields() const {
    return ThemeFields{ui_->Text2->text(), ui_->Text1->toPlainText(), ui_->Text3->text()};
}

// Enter in the list of codes goes to the default button: a line break belongs to no code.
bool Form6::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease) {
        Text1_Click();
    }
    if (watched == ui_->Text1 && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            event->ignore();
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace guanchao
