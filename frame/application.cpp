#include "frame/application.h"

#include <QContextMenuEvent>
#include <QDebug>
#include <QKeyEvent>
#include <QLabel>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <QWidget>

#include "frame/looks.h"
#include "store/failure.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

static void showPlainly(QObject* widget) {
    auto* label = qobject_cast<QLabel*>(widget);
    if (label && label->textFormat() == Qt::AutoText) {
        label->setTextFormat(Qt::PlainText);
    }
}

// Its control would have taken it before it came to a field.
static bool isLostMnemonic(const QObject* receiver, const QEvent* event) {
    const auto* field = qobject_cast<const QWidget*>(receiver);
    if (event->type() != QEvent::KeyPress || !field ||
        !field->testAttribute(Qt::WA_InputMethodEnabled)) {
        return false;
    }
    const auto* press = static_cast<const QKeyEvent*>(event);
    constexpr Qt::KeyboardModifiers held = Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier;
    const QString text = press->text();
    return (press->modifiers() & held) == Qt::AltModifier && !text.isEmpty() &&
           text.front().isPrint();
}

// The menu of what has the keys, as with the menu key.
static bool opensMenu(QObject* receiver, const QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto* press = static_cast<const QKeyEvent*>(event);
    auto* widget = qobject_cast<QWidget*>(receiver);
    if (!widget || press->key() != Qt::Key_F10 || press->modifiers() != Qt::ShiftModifier) {
        return false;
    }
    const QPoint place = widget->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, place, widget->mapToGlobal(place));
    QCoreApplication::sendEvent(widget, &menu);
    return menu.isAccepted();
}

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(programName);
    setApplicationVersion(QStringLiteral(GUANCHAO_VERSION));
    setQuitOnLastWindowClosed(false);
    QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
    applyLooks(*this);
    speakChinese();
}

// The toolkit's own words: menus of text boxes, the open-file dialog, the menu of the browser.
void Application::speakChinese() {
    for (const QString& words : {u"qtbase_zh_CN"_s, u"qtwebengine_zh_CN"_s}) {
        auto* translator = new QTranslator(this);
        if (translator->load(words, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
            installTranslator(translator);
        }
    }
}

bool Application::notify(QObject* receiver, QEvent* event) {
    if (event->type() == QEvent::Polish) {
        showPlainly(receiver);
    }
    if (isLostMnemonic(receiver, event)) {
        return true;
    }
    try {
        if (opensMenu(receiver, event)) {
            return true;
        }
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        report(failure);
        return true;
    }
}

void Application::report(const std::exception& failure) {
    const QString text = failureText(failure);
    if (dialogs_) {
        dialogs_->tellFailure(text);
    } else {
        qWarning().noquote() << text;
    }
}

}  // namespace guanchao
