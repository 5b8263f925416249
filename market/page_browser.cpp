#include "market/page_browser.h"

#include <QLibrary>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

std::unique_ptr<PageBrowser> makePageBrowser(const QString& folder, QWidget& parent,
                                             const PageListener& listener) {
    using PageView = PageBrowser* (*)(QWidget*, const PageListener&);
    const QFunctionPointer function =
        QLibrary::resolve(folder + u"libguanchao_browser.so"_s, "guanchaoPageView");
    return std::unique_ptr<PageBrowser>(
        function ? reinterpret_cast<PageView>(function)(&parent, listener) : nullptr);
}

}  // namespace guanchao
