// Remembers the windows that are open, by class name, and closes them. Closed windows delete
// themselves; one that asks its user whether to close may stay open.
#pragma once

#include <QList>
#include <QMultiHash>
#include <QPointer>
#include <QString>
#include <QWidget>
#include <functional>

namespace guanchao {

class OpenWindows {
public:
    // For the time in which a question stands. Under it windows may be closed, by an alarm or from
    // the tray, and one of them may be the asker, whose handlers wait for the answer: the windows
    // that are open now go from the screen as ever, but are deleted only when the handler that
    // asked has returned.
    class Keep {
    public:
        explicit Keep(OpenWindows& windows);
        ~Keep();
        Keep(const Keep&) = delete;
        Keep& operator=(const Keep&) = delete;

    private:
        OpenWindows& windows_;
        QList<QPointer<QWidget>> kept_;
    };

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

    // All windows of the class name; true if none is left open.
    bool close(const QString& name);

    // Every window that was adopted; the main window is not among them. True if none is left.
    bool closeAll();

    // A window that has gone from the screen and lives on until its run has ended, where all that
    // is left open are such windows; null otherwise.
    QWidget* endingWindow() const;

    // True while a question stands: a window that would ask one of its own before it closes stays.
    bool questionStands() const { return questions_ > 0; }
    // Does the job, which belongs to `owner`, when the question that stands has been answered and
    // its asker has come to its end, unless the answer was that a window is to stay.
    void afterQuestion(QObject& owner, std::function<void()> job);
    // For a window whose user has answered so.
    void stay() { afterQuestion_ = nullptr; }

private:
    void questionAnswered();

    QMultiHash<QString, QPointer<QWidget>> open_;
    int questions_ = 0;
    QPointer<QObject> owner_;
    std::function<void()> afterQuestion_;
};

}  // namespace guanchao
