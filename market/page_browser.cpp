#include "market/page_browser.h"

#include <QLibrary>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

QWidget* makePageBrowser(const QString& folder, const QString& address, QWidget& parent,
                         const std::function<void(PageFailure)>& failed) {
    using PageView =
        QWidget* (*)(const QString&, QWidget*, const std::function<void(PageFailure)>&);
    const QFunctionPointer function =
        QLibrary::resolve(folder + u"libguanchao_browser.so"_s, "guanchaoPageView");
    return function ? reinterpret_cast<PageView>(function)(address, &parent, failed) : nullptr;
}

}  // namespace guanchao
