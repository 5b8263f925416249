// The browser control, from a library of its own that is loaded at the first page.
#pragma once

#include <QString>
#include <QWidget>
#include <functional>

namespace guanchao {

// A control that shows the page; nothing where the library is not in the folder or its browser
// can't start here. `failed` is called if the browser ends on its own.
QWidget* makePageBrowser(const QString& folder, const QString& address, QWidget& parent,
                         const std::function<void()>& failed);

}  // namespace guanchao
