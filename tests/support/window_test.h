// The window under test in an environment of real stores and faked services, and its controls by
// their names.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPointer>
#include <QProgressBar>

#include "app/desktop.h"
#include "frame/environment.h"
#include "frame/open_windows.h"
#include "frame/windows.h"
#include "market/mean_volume.h"
#include "market/polled_day.h"
#include "research/asked_history.h"
#include "research/history_candles.h"
#include "research/history_desk.h"
#include "research/history_shelf.h"
#include "services/services_file.h"
#include "tests/support/store_test.h"
#include "tests/support/test_windows.h"

namespace guanchao {

class WindowTest : public StoreTest {
protected:
    // No window outlives what it was given.
    ~WindowTest() override {
        dialogs_.onAsk = dialogs_.onInput = nullptr;
        leaveWindows();
    }

    // Without waiting for any.
    static void closeWindows() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && window->testAttribute(Qt::WA_DeleteOnClose)) {
                window->close();
            }
        }
    }

    static void leaveWindows() {
        closeWindows();
        deleteClosedWindows();
    }

    template <typename Form>
    Form* open() {
        windows_.openAnew<Form>();
        auto* form = shownWindow<Form>();
        form_ = form;
        return form;
    }

    // The window that an entry of another opens is the one under test from then on.
    template <typename Form>
    Form* openBy(const QWidget* window, const QString& entry) {
        child<QAction>(window, entry)->trigger();
        auto* form = shownWindow<Form>();
        EXPECT_NE(form, nullptr) << entry.toStdString();
        form_ = form;
        return form;
    }

    template <typename Widget>
    Widget* find(const QString& name) const {
        return child<Widget>(form_, name);
    }
    QPushButton* button(const QString& name) const { return find<QPushButton>(name); }
    // What its handler throws comes out.
    void click(const QString& name) const { button(name)->click(); }
    void trigger(const QString& entry) const { find<QAction>(entry)->trigger(); }
    QLineEdit* edit(const QString& name) const { return find<QLineEdit>(name); }
    QString text(const QString& name) const { return edit(name)->text(); }
    QString label(const QString& name) const { return find<QLabel>(name)->text(); }
    GridView& view(const QString& name = QStringLiteral("MSHFlexGrid1")) const {
        return *find<GridView>(name);
    }
    ResultGrid& grid(const QString& name = QStringLiteral("MSHFlexGrid1")) const {
        return gridOf(view(name));
    }
    // The words of the popup that is open, which then closes; those that can't be chosen are empty.
    // Without what the view of a grid has put at its end.
    static QStringList popup() {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QStringList words;
        for (const QAction* action : menu ? menu->actions() : QList<QAction*>()) {
            if (!action->isSeparator() && !qobject_cast<GridView*>(action->parent())) {
                words << (action->isEnabled() ? action->text() : QString());
            }
        }
        return menu && menu->close() ? words : QStringList();
    }

    Stores stores_ = store_.stores;
    // FakeHttp answers whatever their host.
    static Services services() {
        Services services;
        services.quote = services.history = {Service()};
        return services;
    }

    Services services_ = services();
    ServicesFile servicesFile_{store_.folder() + u"services.ini"_s, services_};
    OpenWindows openWindows_;
    FakeShell shell_;
    FakeSound sound_;
    FakeNotifier notifier_;
    FakeClipboard clipboard_;
    FakeProcesses processes_;
    FakeTray desktopTray_;
    TrayModule tray_{desktopTray_, globals_};
    AskedHistory askedHistory_;
    ServiceWatch watch_{http_, clock_};
    HistoryDesk historyDesk_{stores_,   clock_,    watch_,
                             services_, failures_, store_.folder() + u"界面.ini"_s};
    MeanVolume meanVolume_{watch_, services_.history, clock_};
    PolledDay polledDay_;
    HistoryCandles storedCandles_{stores_};
    SharedHistory sharedHistory_;
    Environment environment_{.globals = globals_,
                             .stores = stores_,
                             .removals = removals_,
                             .edits = edits_,
                             .services = services_,
                             .servicesFile = servicesFile_,
                             .clock = clock_,
                             .openWindows = openWindows_,
                             .dialogs = dialogs_,
                             .failures = failures_,
                             .client = watch_,
                             .watch = watch_,
                             .shell = shell_,
                             .clipboard = clipboard_,
                             .processes = processes_,
                             .askedHistory = askedHistory_,
                             .historyDesk = historyDesk_,
                             .meanVolume = meanVolume_,
                             .polledDay = polledDay_,
                             .storedCandles = storedCandles_,
                             .sharedHistory = sharedHistory_,
                             .applicationFolder = store_.folder(),
                             .executableName = u"guanchaotai"_s};
    Desktop desktop_{tray_,
                     sound_,
                     notifier_,
                     {store_.folder() + u"desktop"_s, store_.folder() + u"programs"_s,
                      store_.folder() + u"startup"_s}};
    Windows windows_{environment_};
    QPointer<QWidget> form_;
};

}  // namespace guanchao
