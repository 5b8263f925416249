#include "utilities/form28.h"

#include <QKeyEvent>
#include <QScopeGuard>
#include <QSignalBlocker>

#include "frame/short_texts.h"
#include "ui_form28.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Stores what has become of the switch; a switch that can't be stored goes back.
void storeSwitch(QCheckBox& box, const std::function<void()>& statement) {
    auto putBack = qScopeGuard([&box] {
        const QSignalBlocker noStatement(box);
        box.setChecked(!box.isChecked());
    });
    statement();
    putBack.dismiss();
}

}  // namespace

Form28::Form28(Environment& environment, Windows&)
    : QDialog(nullptr, Qt::Window),
      ui_(std::make_unique<Ui::Form28>()),
      proxies_(environment.stores, environment.dialogs, environment.client,
               environment.services.vendor),
      downloads_(environment.failures) {
    ui_->setupUi(this);
    ui_->stopRun->hide();
    // The keys choose as the mouse does; a click on the chosen line reads it once more.
    ui_->List1->setItemDelegate(new ShortTexts(ui_->List1));
    connect(ui_->List1, &QListWidget::itemSelectionChanged, this, &Form28::List1_Click);
    connect(ui_->List1, &QListWidget::itemClicked, this, &Form28::List1_Click);
    connect(ui_->Check1, &QCheckBox::toggled, this, &Form28::Check1_Click);
    connect(ui_->Check3, &QCheckBox::toggled, this, &Form28::Check3_Click);
    connect(ui_->Check4, &QCheckBox::toggled, this, &Form28::Check4_Click);
    connect(ui_->Command1, &QPushButton::clicked, this, &Form28::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form28::Command2_Click);
    connect(ui_->Command3, &QPushButton::clicked, this, &Form28::Command3_Click);
    connect(ui_->Command4, &QPushButton::clicked, this, &Form28::Command4_Click);
    // A window that was closed is deleted a little later.
    const auto stopDownload = [this] { downloads_.stop(); };
    connect(ui_->stopRun, &QPushButton::clicked, this, stopDownload);
    connect(this, &QDialog::finished, this, stopDownload);
    Form_Load();
}

Form28::~Form28() = default;

void Form28::Form_Load() {
    const ProxyList list = proxies_.load();
    const QSignalBlocker noClick(ui_->List1);
    const QSignalBlocker noUse(ui_->Check3);
    const QSignalBlocker noMode(ui_->Check4);
    ui_->List1->clear();
    ui_->List1->addItems(list.lines);
    ui_->Check3->setChecked(list.useProxy);
    ui_->Check4->setChecked(list.pasv);
}

QString Form28::selectedLine() const {
    const QList<QListWidgetItem*> selected = ui_->List1->selectedItems();
    return selected.isEmpty() ? QString() : selected.first()->text();
}

Proxy Form28::typed() const {
    return {.id = ui_->Label6->text(),
            .server = ui_->Text1->text(),
            .port = ui_->Text2->text(),
            .needsUser = ui_->Check1->isChecked(),
            .user = ui_->Text3->text(),
            .password = ui_->Text4->text(),
            .note = ui_->Text5->text(),
            .isCurrent = ui_->Check2->isChecked()};
}

// The Enter key saves the server that is shown, or adds one where none is.
void Form28::showId(const QString& id) {
    ui_->Label6->setText(id);
    ui_->Command1->setDefault(id.isEmpty());
    ui_->Command2->setDefault(!id.isEmpty());
}

void Form28::List1_Click() {
    const QString line = selectedLine();
    const std::optional<Proxy> proxy = line.isEmpty() ? std::nullopt : proxies_.proxyOf(line);
    if (!proxy) {
        return;
    }
    showId(proxy->id);
    ui_->Text1->setText(proxy->server);
    ui_->Text2->setText(proxy->port);
    ui_->Check1->setChecked(proxy->needsUser);
    ui_->Text3->setText(proxy->user);
    ui_->Text4->setText(proxy->password);
    ui_->Check2->setChecked(proxy->isCurrent);
    ui_->Text5->setText(proxy->note);
}

void Form28::Check1_Click() {
    const bool on = ui_->Check1->isChecked();
    ui_->Text3->setEnabled(on);
    ui_->Text4->setEnabled(on);
}

void Form28::Check3_Click(bool on) {
    storeSwitch(*ui_->Check3, [&] { proxies_.setUseProxy(on); });
}

void Form28::Check4_Click(bool on) {
    storeSwitch(*ui_->Check4, [&] { proxies_.setPasv(on); });
}

// No server is chosen any more: the number of one that has gone may come to be that of another.
void Form28::showChangedList() {
    Form_Load();
    showId({});
}

void Form28::Command1_Click() {
    if (proxies_.add(typed())) {
        showChangedList();
        ui_->List1->setCurrentRow(ui_->List1->count() - 1);  // Enter changes it from now on
    }
}

void Form28::Command2_Click() {
    const int row = ui_->List1->currentRow();
    if (proxies_.modify(typed())) {
        Form_Load();
        ui_->List1->setCurrentRow(row);
    }
}

void Form28::Command3_Click() {
    if (proxies_.remove(selectedLine())) {
        showChangedList();
    }
}

void Form28::Command4_Click() {
    if (!downloads_.running()) {
        downloads_.start([this](std::stop_token stop) { return download(stop); });
    }
}

void Form28::keyPressEvent(QKeyEvent* press) {
    if (press->key() == Qt::Key_Escape && downloads_.running()) {
        downloads_.stop();
    } else {
        QDialog::keyPressEvent(press);
    }
}

QCoro::Task<> Form28::download(std::stop_token stop) {
    showDownloading(true);
    const auto end = qScopeGuard([this] { showDownloading(false); });
    const bool listed = co_await proxies_.download(stop);
    if (listed) {
        showChangedList();
    }
}

void Form28::showDownloading(bool downloading) {
    ui_->Command4->setEnabled(!downloading);
    ui_->stopRun->setVisible(downloading);
}

}  // namespace guanchao
