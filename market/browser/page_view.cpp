// The browser control in a library of its own: Qt WebEngine, silent about the errors of a page. Its
// one function is called by market/page_browser.
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QWebEngineLoadingInfo>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>
#include <functional>

#include "market/page_browser.h"

QT_BEGIN_NAMESPACE
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);
QT_END_NAMESPACE

namespace {

class SilentPage : public QWebEnginePage {
public:
    using QWebEnginePage::QWebEnginePage;

protected:
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int,
                                  const QString&) override {}
    void javaScriptAlert(const QUrl&, const QString&) override {}
    bool javaScriptConfirm(const QUrl&, const QString&) override { return false; }
    bool javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) override {
        return false;
    }
    // A link to a new window opens in this one; boxes that a page would open don't.
    QWebEnginePage* createWindow(WebWindowType type) override {
        return type == WebBrowserTab || type == WebBrowserBackgroundTab ? this : nullptr;
    }
};

// The engine ends the whole process where it finds no sandbox, so it is asked for beforehand in a
// child: may this user open a user namespace of its own?
bool sandboxIsThere() {
    const pid_t child = fork();
    if (child == 0) {
        _exit(unshare(CLONE_NEWUSER) == 0 ? 0 : 1);
    }
    int status = 1;
    pid_t ended = -1;
    do {
        ended = waitpid(child, &status, 0);
    } while (ended < 0 && errno == EINTR);
    return child > 0 && ended == child && status == 0;
}

// Root can't have the sandbox; every other user gets it.
bool prepareSandbox() {
    if (geteuid() == 0) {
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
        return true;
    }
    return qEnvironmentVariableIsSet("QTWEBENGINE_DISABLE_SANDBOX") || sandboxIsThere();
}

// The engine wants the context that all windows share. Made here rather than with the application:
// it would slow every start of the program down.
void prepareShareContext() {
    if (!QOpenGLContext::globalShareContext()) {
        auto* context = new QOpenGLContext(qApp);
        context->create();
        qt_gl_set_global_share_context(context);
    }
}

void quieten(QWebEngineSettings& settings) {
    settings.setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    settings.setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
}

}  // namespace

extern "C" Q_DECL_EXPORT QWidget* guanchaoPageView(
    const QString& address, QWidget* parent,
    const std::function<void(guanchao::PageFailure)>& failed) {
    // Pages of text need no graphics processor, and drawing without one works everywhere.
    qputenv("QT_QUICK_BACKEND", "software");
    if (!prepareSandbox()) {
        return nullptr;
    }
    prepareShareContext();
    auto* view = new QWebEngineView(parent);
    auto* profile = new QWebEngineProfile;  // keeps nothing on the disk
    auto* page = new SilentPage(profile, view);
    QObject::connect(page, &QObject::destroyed, profile, &QObject::deleteLater);
    quieten(*page->settings());
    view->setPage(page);
    QObject::connect(page, &QWebEnginePage::renderProcessTerminated, parent,
                     [failed] { failed(guanchao::PageFailure::ended); });
    QObject::connect(page, &QWebEnginePage::loadingChanged, parent,
                     [failed](const QWebEngineLoadingInfo& loading) {
                         if (loading.status() == QWebEngineLoadingInfo::LoadFailedStatus) {
                             failed(guanchao::PageFailure::notLoaded);
                         }
                     });
    view->setUrl(QUrl(address));
    return view;
}
