#include "frame/open_windows.h"

#include <utility>

#include "frame/run_window.h"

namespace guanchao {

namespace {

// A window whose run is under way closes by itself after it.
bool isClosed(const QWidget& window) {
    const auto* runWindow = qobject_cast<const RunWindow*>(&window);
    return window.isHidden() && !(runWindow && runWindow->closesAfterRun());
}

}  // namespace

// A window that an outer question keeps is left to that.
OpenWindows::Keep::Keep(OpenWindows& windows) : windows_(windows) {
    ++windows.questions_;
    for (const QPointer<QWidget>& window : windows.open_) {
        if (window && window->testAttribute(Qt::WA_DeleteOnClose)) {
            window->setAttribute(Qt::WA_DeleteOnClose, false);
            kept_ << window;
        }
    }
}

OpenWindows::Keep::~Keep() {
    for (const QPointer<QWidget>& window : kept_) {
        if (!window) {
            continue;
        }
        window->setAttribute(Qt::WA_DeleteOnClose);
        if (isClosed(*window)) {
            window->deleteLater();
        }
    }
    windows_.questionAnswered();
}

void OpenWindows::afterQuestion(QObject& owner, std::function<void()> job) {
    owner_ = &owner;
    afterQuestion_ = std::move(job);
}

void OpenWindows::questionAnswered() {
    if (--questions_ > 0 || !owner_ || !afterQuestion_) {
        return;
    }
    // The asker may have asked again meanwhile: then the end of that question comes here.
    const auto job = [this] {
        if (questions_ == 0 && afterQuestion_) {
            std::exchange(afterQuestion_, nullptr)();
        }
    };
    QMetaObject::invokeMethod(owner_, job, Qt::QueuedConnection);
}

bool OpenWindows::close(const QString& name) {
    for (const QPointer<QWidget>& window : open_.values(name)) {
        // A window that is closing already says yes, though its own question may still stand.
        if (!window || (window->close() && !window->isVisible())) {
            open_.remove(name, window);
        }
    }
    return !open_.contains(name);
}

bool OpenWindows::closeAll() {
    bool closed = true;
    for (const QString& name : open_.uniqueKeys()) {
        closed = close(name) && closed;
    }
    return closed;
}

QWidget* OpenWindows::endingWindow() const {
    QWidget* ending = nullptr;
    for (const QPointer<QWidget>& window : open_) {
        if (window && window->isVisible()) {
            return nullptr;
        }
        ending = window ? window.data() : ending;
    }
    return ending;
}

void OpenWindows::adopt(const QString& name, QWidget* window) {
    window->setAttribute(Qt::WA_DeleteOnClose);
    open_.removeIf([](const auto& it) { return it.value().isNull(); });
    open_.insert(name, window);
    window->show();
}

}  // namespace guanchao
