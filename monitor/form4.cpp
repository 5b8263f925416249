#include "monitor/form4.h"

#include <QFocusEvent>
#include <QWindow>

#include "base/values.h"
#include "grid/row_menu.h"
#include "market/form21.h"
#include "monitor/form7.h"
#include "monitor/form8.h"
#include "ui_form4.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// A popup, another program or a message box takes the focus only for a while.
bool leavesTheBox(Qt::FocusReason reason) {
    return reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason;
}

}  // namespace

Form4::Form4(Environment& environment, Windows& windows)
    : QDialog(nullptr, Qt::Window),
      environment_(environment),
      windows_(windows),
      ui_(std::make_unique<Ui::Form4>()),
      manager_(environment.stores, environment.globals, environment.dialogs, environment.clipboard,
               environment.removals, themes_, stocks_),
      runs_(environment.failures) {
    ui_->setupUi(this);
    for (QPushButton* button : {ui_->Command1, ui_->Command2}) {
        button->setAutoDefault(false);  // Enter belongs to the frequency
    }
    ui_->MSHFlexGrid1->setGrid(themes_);
    ui_->MSHFlexGrid1->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid1->setHint(u"还没有主题监控\n\n在主窗口右击一个主题，选“添加主题监控”"_s);
    ui_->MSHFlexGrid2->setGrid(stocks_);
    ui_->MSHFlexGrid2->allowExport(environment_.dialogs, environment_.failures);
    ui_->MSHFlexGrid2->setHint(u"还没有个股监控\n\n在主窗口右击一只股票，选“添加个股监控”"_s);
    buildMenus();
    connectControls();
    undoLine_ = std::make_unique<UndoLine>(*ui_->removedWords, *ui_->undo, environment_,
                                           monitorWindowPlace, [this] { Form_Load(); });
    connectGrids();
    // An alarm brings the window up while the user types elsewhere: no key may reach the frequency.
    ui_->MSHFlexGrid1->setFocus();
    Form_Load();
}

Form4::~Form4() = default;

void Form4::buildMenus() {
    kuaijie1_.setObjectName(u"kuaijie1"_s);
    fillRowMenu(kuaijie1_, {ui_->添加监控, ui_->修改监控, ui_->删除监控, ui_->复制主题名称},
                {ui_->删除监控});
    kuaijie2_.setObjectName(u"kuaijie2"_s);
    fillRowMenu(kuaijie2_, {ui_->添加监控2, ui_->修改监控2, ui_->删除监控2, ui_->查看行情},
                {ui_->删除监控2});
}

void Form4::connectControls() {
    connect(ui_->Command1, &QPushButton::clicked, this, &Form4::Command1_Click);
    connect(ui_->Command2, &QPushButton::clicked, this, &Form4::Command2_Click);
    connect(ui_->Text1, &QLineEdit::textChanged, this, &Form4::Text1_Change);
    connect(ui_->Text1, &QLineEdit::returnPressed, this, &Form4::Text1_LostFocus);
    ui_->Text1->installEventFilter(this);
    connect(ui_->查看行情, &QAction::triggered, this, &Form4::查看行情_Click);
    connect(ui_->添加监控, &QAction::triggered, this, &Form4::添加监控_Click);
    connect(ui_->修改监控, &QAction::triggered, this, &Form4::修改监控_Click);
    connect(ui_->删除监控, &QAction::triggered, this,
            [this] { deleteMonitor(&MonitorManager::deleteTheme); });
    connect(ui_->复制主题名称, &QAction::triggered, this, [this] { manager_.copyThemeName(); });
    connect(ui_->添加监控2, &QAction::triggered, this, &Form4::添加监控2_Click);
    connect(ui_->修改监控2, &QAction::triggered, this, &Form4::修改监控2_Click);
    connect(ui_->删除监控2, &QAction::triggered, this,
            [this] { deleteMonitor(&MonitorManager::deleteStock); });
}

void Form4::connectGrids() {
    GridView& themes = *ui_->MSHFlexGrid1;
    GridView& stocks = *ui_->MSHFlexGrid2;
    themes.setSortable({u"日期"_s});
    stocks.setSortable({u"日期"_s});
    stocks.shareSortOrder(themes);
    themes.setRowMenu(kuaijie1_);
    stocks.setRowMenu(kuaijie2_);
    connect(&themes, &GridView::rowChosen, this, [this](int row) {
        manager_.selectTheme(row);
        lookAt(FiredMonitor::Kind::theme, row);
    });
    connect(&stocks, &GridView::rowChosen, this, [this](int row) {
        manager_.selectStock(row);
        lookAt(FiredMonitor::Kind::stock, row);
    });
    connect(&stocks, &GridView::rowDoubleClicked, this, &Form4::查看行情_Click);
    connect(&stocks, &GridView::enterPressed, this, &Form4::查看行情_Click);
}

void Form4::Form_Load() {
    const std::optional<QString> frequency = showMonitors(manager_.load());
    if (frequency) {
        ui_->Text1->setText(*frequency);
    }
    Text1_Change();
}

void Form4::refresh() {
    showMonitors(manager_.reload());
}

// Gives the stored frequency back.
std::optional<QString> Form4::showMonitors(const MonitorManager::Loaded& loaded) {
    showFlag();
    for (const FiredMonitor& monitor : fired_) {
        tint(monitor.kind, rowsOf(monitor.kind, monitor.key), true);
    }
    ui_->Label3->setText(loaded.monitored);
    return loaded.frequency;
}

void Form4::showFlag() {
    setWindowTitle(manager_.caption() +
                   (staleWords_.isEmpty() ? QString() : u"  "_s + staleWords_));
    ui_->Command2->setText(manager_.buttonWords());
    ui_->Command2->setAccessibleName(manager_.buttonWords());
}

void Form4::showFired(const QList<FiredMonitor>& fired) {
    fired_ = fired;
    for (const FiredMonitor& monitor : fired) {
        const QList<int> rows = rowsOf(monitor.kind, monitor.key);
        if (!rows.isEmpty()) {
            tint(monitor.kind, rows, true);
            GridView& view =
                monitor.kind == FiredMonitor::Kind::theme ? *ui_->MSHFlexGrid1 : *ui_->MSHFlexGrid2;
            view.scrollTo(view.model()->index(rows.first() - 1, 0));
        }
    }
}

// A stock may have several monitors; the alarm time tells which of them it was.
QList<int> Form4::rowsOf(FiredMonitor::Kind kind, const QString& key) {
    const ResultGrid& grid = gridOf(kind);
    QList<int> rows;
    for (int row = 1; row < grid.rows(); ++row) {
        if (trimBlanks(grid.textMatrix(row, 1)) == key) {
            rows << row;
        }
    }
    return rows;
}

ResultGrid& Form4::gridOf(FiredMonitor::Kind kind) {
    return kind == FiredMonitor::Kind::theme ? themes_ : stocks_;
}

void Form4::tint(FiredMonitor::Kind kind, const QList<int>& rows, bool fired) {
    ResultGrid& grid = gridOf(kind);
    for (const int row : rows) {
        for (int col = 1; col < grid.cols(); ++col) {
            if (fired) {
                grid.setCellBackColor(row, col, firedGround);
            } else {
                grid.clearCellBackColor(row, col);
            }
        }
    }
}

void Form4::lookAt(FiredMonitor::Kind kind, int row) {
    if (gridOf(kind).isDataRow(row)) {
        const QString key = trimBlanks(gridOf(kind).textMatrix(row, 1));
        tint(kind, rowsOf(kind, key), false);
        fired_.removeIf([&](const FiredMonitor& it) { return it.kind == kind && it.key == key; });
        emit lookedAt({kind, key, {}});
    }
}

void Form4::showStale(const QString& words) {
    staleWords_ = words;
    showFlag();
}

void Form4::comeUp(bool overAll) {
    setWindowState(windowState() & ~Qt::WindowMinimized);
    windowHandle()->setFlag(Qt::WindowStaysOnTopHint, overAll && !isActiveWindow());
    raise();
}

void Form4::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && windowHandle()) {
        windowHandle()->setFlag(Qt::WindowStaysOnTopHint, false);
    }
}

void Form4::Command1_Click() {
    runs_.start([this](std::stop_token stop) -> QCoro::Task<> {
        const bool cleared = co_await manager_.clearAll(stop);
        if (cleared) {
            undoLine_->showLast();
            Form_Load();
        }
    });
}

void Form4::Command2_Click() {
    manager_.toggle(environment_.clock.now().date());
    showFlag();
}

void Form4::Text1_Change() {
    ui_->Label2->setText(MonitorManager::capacityWords(ui_->Text1->text()));
}

void Form4::Text1_LostFocus() {
    changeFrequency();
}

void Form4::changeFrequency() {
    const std::optional<QString> putBack = manager_.changeFrequency(ui_->Text1->text());
    if (putBack) {
        ui_->Text1->setText(*putBack);
    }
}

void Form4::deleteMonitor(void (MonitorManager::*remove)()) {
    (manager_.*remove)();
    Form_Load();
}

bool Form4::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->Text1 && event->type() == QEvent::FocusOut && isVisible() &&
        leavesTheBox(static_cast<QFocusEvent*>(event)->reason())) {
        Text1_LostFocus();
    }
    return QDialog::eventFilter(watched, event);
}

void Form4::查看行情_Click() {
    windows_.openAnew<Form21>();
}

void Form4::添加监控_Click() {
    environment_.globals.bianjimoshi = 0;
    windows_.openAnew<Form8>();
}

void Form4::修改监控_Click() {
    environment_.globals.bianjimoshi = 1;
    windows_.openAnew<Form8>();
}

void Form4::添加监控2_Click() {
    environment_.globals.bianjimoshi = 0;
    windows_.openAnew<Form7>();
}

void Form4::修改监控2_Click() {
    environment_.globals.bianjimoshi = 1;
    windows_.openAnew<Form7>();
}

}  // namespace guanchao
