// A window that owns a run: closed during it, it goes from the screen at once, ends the run and
// closes when the run has ended.
#pragma once

#include <QDialog>
#include <functional>

namespace guanchao {

class RunWindow : public QDialog {
    Q_OBJECT

public:
    explicit RunWindow(Qt::WindowFlags flags = {}) : QDialog(nullptr, flags) {}

public slots:
    // Esc closes as every other way does, so that the run is ended first.
    void reject() override { close(); }

protected:
    void closeEvent(QCloseEvent* event) override;
    // Does the job, which is a run of this window, and closes the window if that was asked
    // meanwhile.
    void doRun(const std::function<void()>& job);

private:
    virtual bool runs() const = 0;
    virtual void cancelRun() = 0;

    bool closesAfterRun_ = false;
};

}  // namespace guanchao
