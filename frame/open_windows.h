// Remembers the windows that are open, by class name, and closes them. Closed windows delete
// themselves; one that asks its user whether to close may stay open.
#pragma once

#include <QCoro/QCoroTask>
#include <QMultiHash>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <stop_token>

namespace guanchao {

class OpenWindows {
public:
    // Shows the window and remembers it until it is closed.
    void adopt(const QString& name, QWidget* window);

    // An open one of the class; null if there is none.
    template <typename Form>
    Form* find() const {
        const QString name = QString::fromLatin1(Form::staticMetaObject.className());
        for (const QPointer<QWidget>& window : open_.values(name)) {
            if (window && window->isVisible()) {
                return static_cast<Form*>(window.data());
            }
        }
        return nullptr;
    }

    // All windows of the class name.
    void close(const QString& name);

    // Every window that was adopted, one after the other; the main window is not among them. Waits
    // for those that ask, and for those whose run ends first. False if a user keeps one.
    QCoro::Task<bool> closeAll(std::stop_token stop);

private:
    QMultiHash<QString, QPointer<QWidget>> open_;
};

}  // namespace guanchao
