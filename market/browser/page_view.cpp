// The browser control in a library of its own: Qt WebEngine, silent about the errors of a page. Its
// one function is called by market/page_browser.
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QWebEngineHistory>
#include <QWebEngineLoadingInfo>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

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

// Without a page that tells of an error, the page that was shown stays.
void quieten(QWebEngineSettings& settings) {
    settings.setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
    settings.setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
}

guanchao::PageEvent eventOf(QWebEngineLoadingInfo::LoadStatus status) {
    switch (status) {
        case QWebEngineLoadingInfo::LoadStartedStatus:
            return guanchao::PageEvent::begins;
        case QWebEngineLoadingInfo::LoadStoppedStatus:
            return guanchao::PageEvent::stopped;
        case QWebEngineLoadingInfo::LoadSucceededStatus:
            return guanchao::PageEvent::shown;
        case QWebEngineLoadingInfo::LoadFailedStatus:
            break;
    }
    return guanchao::PageEvent::notLoaded;
}

class PageView : public QWebEngineView, public guanchao::PageBrowser {
public:
    PageView(QWidget* parent, const guanchao::PageListener& listener) : QWebEngineView(parent) {
        auto* profile = new QWebEngineProfile;  // keeps nothing on the disk
        auto* page = new SilentPage(profile, this);
        connect(page, &QObject::destroyed, profile, &QObject::deleteLater);
        quieten(*page->settings());
        setPage(page);
        connect(page, &QWebEnginePage::renderProcessTerminated, this,
                [listener] { listener.happened(guanchao::PageEvent::ended, {}); });
        connect(page, &QWebEnginePage::loadProgress, this, listener.progress);
        connect(page, &QWebEnginePage::loadingChanged, this,
                [listener](const QWebEngineLoadingInfo& loading) {
                    listener.happened(eventOf(loading.status()), loading.url().toString());
                });
    }

    QWidget& control() override { return *this; }
    void open(const QString& address) override { setUrl(QUrl(address)); }
    bool canGoBack() const override { return history()->canGoBack(); }
    void back() override { QWebEngineView::back(); }
    void reload() override { QWebEngineView::reload(); }
    void stop() override { QWebEngineView::stop(); }
};

}  // namespace

extern "C" Q_DECL_EXPORT guanchao::PageBrowser* guanchaoPageView(
    QWidget* parent, const guanchao::PageListener& listener) {
    // Pages of text need no graphics processor, and drawing without one works everywhere.
    qputenv("QT_QUICK_BACKEND", "software");
    if (!prepareSandbox()) {
        return nullptr;
    }
    prepareShareContext();
    return new PageView(parent, listener);
}
