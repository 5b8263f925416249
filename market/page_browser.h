// The browser control, from a library of its own that is loaded at the first page.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace guanchao {

enum class PageFailure {
    notLoaded,  // the page can't be had
    ended,      // the browser ended on its own
};

// A control that shows the page; nothing where the library is not in the folder or its browser
// can't start here. `failed` may be called at any time later.
QWidget* makePageBrowser(const QString& folder, const QString& address, QWidget& parent,
                         const std::function<void(PageFailure)>& failed);

}  // namespace guanchao
