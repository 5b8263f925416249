#include "heat/form5.h"

#include "ui_form5.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

Form5::Form5(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      ui_(std::make_unique<Ui::Form5>()),
      editor_(environment.stores, environment.globals, environment.dialogs, environment.removals),
      runs_(environment.failures) {
    ui_->setupUi(this);
    connect(ui_->Command1, &QPushButton::clicked, this, &Form5::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form5::Command2_Click);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form5::Command3_Click);
    connect(ui_->Text2, &QLineEdit::textChanged, this, &Form5::showWhetherCollected);
    undoLine_ = std::make_unique<UndoLine>(*ui_->removedWords, *ui_->undo, environment,
                                           commodityPlace, [] {});
    Form_Load();
}

Form5::~Form5() = default;

void Form5::Form_Load() {
    const std::optional<Commodity> stored = editor_.load();
    setWindowTitle(stored ? u"修改商品"_s : u"添加商品"_s);
    ui_->Command1->setDefault(!stored);
    ui_->Command2->setDefault(stored.has_value());
    if (stored) {
        showCommodity(*stored);
    }
    showWhetherCollected();
}

// The limit is set in another window, which may be open beside this one.
void Form5::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        showWhetherCollected();
    }
}

void Form5::showWhetherCollected() {
    const QString words = editor_.notCollectedWords(ui_->Text2->text());
    ui_->notCollected->setText(words);
    ui_->notCollected->setVisible(!words.isEmpty());
}

Commodity Form5::typed() const {
    return {
        .name = ui_->Text1->text(), .stocks = ui_->Text3->text(), .attention = ui_->Text2->text()};
}

void Form5::showCommodity(const Commodity& commodity) {
    ui_->Text1->setText(commodity.name);
    ui_->Text3->setText(commodity.stocks);
    ui_->Text2->setText(commodity.attention);
}

void Form5::Command1_Click() {
    editor_.add(typed(), [this](const Commodity& stored) { showCommodity(stored); });
}

void Form5::Command2_Click() {
    editor_.modify(typed());
}

void Form5::Command3_Click() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        co_await editor_.remove(ui_->Text1->text(), stop);
        undoLine_->showLast();
    });
}

}  // namespace guanchao
