// The browser control, from a library of its own that is loaded at the first page.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

namespace guanchao {

enum class PageEvent {
    begins,     // a page or a link of it is on its way
    shown,      // it has come
    stopped,    // on request; what was shown stays
    notLoaded,  // it can't be had; what was shown stays
    ended,      // the browser ended on its own
};

// What the browser tells, at any time while it lives.
struct PageListener {
    std::function<void(PageEvent event, const QString& address)> happened;
    std::function<void(int percent)> progress;
};

class PageBrowser {
public:
    virtual ~PageBrowser() = default;

    virtual QWidget& control() = 0;
    virtual void open(const QString& address) = 0;
    virtual bool canGoBack() const = 0;
    virtual void back() = 0;
    virtual void reload() = 0;
    virtual void stop() = 0;
};

// Nothing where the library is not in the folder or its browser can't start here.
std::unique_ptr<PageBrowser> makePageBrowser(const QString& folder, QWidget& parent,
                                             const PageListener& listener);

}  // namespace guanchao
