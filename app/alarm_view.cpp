#include "app/alarm_view.h"

#include <QApplication>
#include <QMessageBox>
#include <QScopeGuard>
#include <QWindow>

#include "store/patience.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// Questions and answers that are on the screen.
QWidgetList standingBoxes() {
    QWidgetList boxes = QApplication::topLevelWidgets();
    boxes.removeIf([](const QWidget* it) {
        return !it->isVisible() || !(it->isModal() || qobject_cast<const QMessageBox*>(it));
    });
    return boxes;
}

}  // namespace

AlarmView::AlarmView(Environment& environment, Windows& windows, Notifier& notifier,
                     AlarmDesk& desk, QLabel& line)
    : environment_(environment), windows_(windows), notifier_(notifier), desk_(desk), line_(line) {
    connect(&desk, &AlarmDesk::fired, this, &AlarmView::tell);
    connect(&desk, &AlarmDesk::stateChanged, this, &AlarmView::showState);
    connect(&desk, &AlarmDesk::silenced, &banner_, &QWidget::hide);
    connect(&banner_, &AlarmBanner::clicked, this, &AlarmView::turnToMonitors);
    // The user has turned to this program.
    connect(qApp, &QGuiApplication::focusWindowChanged, &banner_, [this](const QWindow* window) {
        if (window) {
            banner_.hide();
        }
    });
    connect(&environment.openWindows, &OpenWindows::opened, this, [this](QWidget* window) {
        if (auto* manager = qobject_cast<Form4*>(window)) {
            showIn(*manager);
        }
    });
}

bool AlarmView::showMonitors() {
    if (QApplication::activePopupWidget()) {
        return false;
    }
    const QWidget* active = QApplication::activeWindow();
    const bool userIsHere = active && active->isVisible();
    if (!tryStep([this] { refreshOrOpen(); }, false)) {
        return false;
    }
    bringUp(userIsHere);
    if (!userIsHere) {
        banner_.tell(desk_.unseen());
    }
    return true;
}

// The manager takes no input before a box that stands is answered, and must not cover that; another
// program keeps the keyboard all the same.
void AlarmView::bringUp(bool userIsHere) {
    const QWidgetList boxes = standingBoxes();
    if (auto* manager = environment_.openWindows.find<Form4>()) {
        manager->comeUp(boxes.isEmpty());
    }
    for (QWidget* box : boxes) {
        box->raise();
    }
    if (QWidget* box = QApplication::activeModalWidget(); box && userIsHere) {
        box->raise();
        box->activateWindow();
    }
}

// By a click on the banner.
void AlarmView::turnToMonitors() {
    banner_.hide();
    if (!tryStep([this] { refreshOrOpen(); }, false)) {
        return;
    }
    bringUp(true);
    auto* manager = environment_.openWindows.find<Form4>();
    if (manager && !QApplication::activeModalWidget()) {
        manager->activateWindow();
    }
}

void AlarmView::refreshOrOpen() {
    if (auto* manager = environment_.openWindows.find<Form4>()) {
        manager->refresh();
        showIn(*manager);
    } else {
        openQuietly();
    }
}

// The load of the manager chooses nothing; what the user has chosen elsewhere stays so.
void AlarmView::openQuietly() {
    Globals& globals = environment_.globals;
    const auto keepChoice = qScopeGuard([&globals, theme = globals.dangqianzhuti,
                                         dm = globals.dangqiandm, jc = globals.dangqianjc] {
        globals.dangqianzhuti = theme;
        globals.dangqiandm = dm;
        globals.dangqianjc = jc;
    });
    windows_.openQuietly<Form4>();
}

void AlarmView::showIn(Form4& manager) {
    connect(&manager, &Form4::lookedAt, &desk_, &AlarmDesk::forget, Qt::UniqueConnection);
    manager.showFired(desk_.unseen());
    manager.showStale(desk_.staleWords());
}

void AlarmView::tell(const FiredMonitor& monitor) {
    notifier_.notify(monitor.kind == FiredMonitor::Kind::theme ? u"主题报警"_s : u"个股报警"_s,
                     monitor.words);
}

void AlarmView::showState() {
    const QString stale = desk_.staleWords();
    line_.setText(stale.isEmpty() ? QString() : u"监控 "_s + stale);
    if (auto* manager = environment_.openWindows.find<Form4>()) {
        manager->showStale(stale);
    }
}

}  // namespace guanchao
