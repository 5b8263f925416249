#include "app/alarm_view.h"

#include <QApplication>
#include <QScopeGuard>

#include "store/patience.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

AlarmView::AlarmView(Environment& environment, Windows& windows, Notifier& notifier,
                     AlarmDesk& desk, QLabel& line)
    : environment_(environment), windows_(windows), notifier_(notifier), desk_(desk), line_(line) {
    connect(&desk, &AlarmDesk::fired, this, &AlarmView::tell);
    connect(&desk, &AlarmDesk::stateChanged, this, &AlarmView::showState);
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
    const bool userIsHere = QApplication::activeWindow() != nullptr;
    if (!tryStep([this] { refreshOrOpen(); }, false)) {
        return false;
    }
    if (auto* manager = environment_.openWindows.find<Form4>()) {
        manager->comeUp();
    }
    // The manager takes no input before a box that stands is answered, and must not cover that;
    // another program keeps the keyboard all the same.
    if (QWidget* box = QApplication::activeModalWidget()) {
        box->raise();
        if (userIsHere) {
            box->activateWindow();
        }
    }
    return true;
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
