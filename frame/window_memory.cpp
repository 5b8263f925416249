#include "frame/window_memory.h"

#include <QApplication>
#include <QEvent>
#include <QMainWindow>
#include <QScreen>
#include <QScrollArea>
#include <QSettings>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include "frame/kept_control.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

// What the desktop puts around a window, at its usual most.
constexpr QMargins frame(8, 32, 8, 8);

QString groupOf(const QWidget& window) {
    const QString name = QString::fromLatin1(window.metaObject()->className());
    return u"窗口/"_s + name.section(u"::"_s, -1);
}

// A second window of a class stands beside the first, so that both can be seen.
bool coversAnother(const QWidget& window) {
    const QWidgetList all = QApplication::topLevelWidgets();
    return std::any_of(all.begin(), all.end(), [&window](const QWidget* other) {
        const QPoint between = other->geometry().topLeft() - window.geometry().topLeft();
        return other != &window && other->isVisible() &&
               between.manhattanLength() <= frame.top() + frame.left() &&
               other->metaObject() == window.metaObject();
    });
}

QRect roomOf(const QWidget& window) {
    return window.screen()->availableGeometry().marginsRemoved(frame);
}

// Texts that wrap need more height where the window is narrow.
QSize neededBy(const QWidget& window) {
    const QLayout* controls = window.layout();
    if (!controls) {
        return window.minimumSize();
    }
    QSize needed = controls->totalMinimumSize();
    if (controls->hasHeightForWidth()) {
        const int width = std::max(window.width(), needed.width());
        needed.setHeight(std::max(needed.height(), controls->minimumHeightForWidth(width)));
    }
    return needed.expandedTo(window.minimumSize());
}

// Controls that need more room than the screen has are scrolled.
void scrollWhatIsTooLarge(QWidget& window) {
    const QSize room = roomOf(window).size();
    const QSize needed = neededBy(window);
    window.setMinimumSize(needed.boundedTo(room));
    QLayout* controls = window.layout();
    if (!controls || needed.boundedTo(room) == needed || qobject_cast<QMainWindow*>(&window)) {
        return;
    }
    auto* content = new QWidget;
    content->setLayout(controls);
    auto* area = new QScrollArea;
    area->setObjectName(u"scrolled"_s);
    area->setAccessibleName(window.windowTitle());
    area->setFocusPolicy(Qt::NoFocus);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setWidget(content);
    auto* whole = new QVBoxLayout(&window);
    whole->setContentsMargins({});
    whole->addWidget(area);
}

void putInTheMiddle(QWidget& window) {
    QRect place(QPoint(), window.size());
    place.moveCenter(roomOf(window).center());
    window.setGeometry(place);
}

// The title bar can be reached, whatever the screen was when the place was kept.
void bringOntoScreen(QWidget& window) {
    const QRect room = roomOf(window);
    QRect place(window.geometry().topLeft(), window.size().boundedTo(room.size()));
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveLeft(std::max(place.left(), room.left()));
    place.moveTop(std::max(place.top(), room.top()));
    if (place != window.geometry()) {
        window.setGeometry(place);
    }
}

// One whose chosen page is kept says so by a property of its own.
QTabWidget* keptTabs(QWidget* widget) {
    auto* tabs = qobject_cast<QTabWidget*>(widget);
    return tabs && tabs->property("keepsPage").toBool() ? tabs : nullptr;
}

// Shows what is kept, and keeps what is there when the window goes.
class Keeper : public QObject {
public:
    Keeper(QWidget& window, QString iniPath)
        : QObject(&window), window_(window), group_(groupOf(window)), iniPath_(std::move(iniPath)) {
        window.installEventFilter(this);
        connect(qApp, &QCoreApplication::aboutToQuit, this, &Keeper::keep);
    }

    bool show() {
        QSettings settings(iniPath_, QSettings::IniFormat);
        settings.beginGroup(group_);
        for (QWidget* it : window_.findChildren<QWidget*>()) {
            if (auto* control = dynamic_cast<KeptControl*>(it)) {
                control->showKept(settings.value(it->objectName()).toMap());
            } else if (auto* splitter = qobject_cast<QSplitter*>(it)) {
                splitter->restoreState(settings.value(it->objectName()).toByteArray());
            } else if (QTabWidget* tabs = keptTabs(it)) {
                tabs->setCurrentIndex(settings.value(it->objectName()).toInt());
            }
        }
        return window_.restoreGeometry(settings.value(u"位置"_s).toByteArray());
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide && !event->spontaneous()) {
            keep();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    // A window that is hidden by its end is no more what it was.
    void keep() const {
        if (groupOf(window_) != group_) {
            return;
        }
        QSettings settings(iniPath_, QSettings::IniFormat);
        settings.beginGroup(group_);
        settings.setValue(u"位置"_s, window_.saveGeometry());
        for (QWidget* it : window_.findChildren<QWidget*>()) {
            if (const auto* control = dynamic_cast<const KeptControl*>(it)) {
                settings.setValue(it->objectName(), control->kept());
            } else if (const auto* splitter = qobject_cast<const QSplitter*>(it)) {
                settings.setValue(it->objectName(), splitter->saveState());
            } else if (const QTabWidget* tabs = keptTabs(it)) {
                settings.setValue(it->objectName(), tabs->currentIndex());
            }
        }
    }

    QWidget& window_;
    QString group_;
    QString iniPath_;
};

}  // namespace

bool WindowMemory::place(QWidget& window) const {
    scrollWhatIsTooLarge(window);
    const bool kept = !iniPath_.isEmpty() && (new Keeper(window, iniPath_))->show();
    if (!kept) {
        putInTheMiddle(window);
    }
    if (coversAnother(window)) {
        window.setGeometry(window.geometry().translated(frame.top(), frame.top()));
    }
    if (!window.isMaximized()) {
        bringOntoScreen(window);
    }
    return kept;
}

}  // namespace guanchao
