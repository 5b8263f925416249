#include "collector/search_page.h"

#include "formats/html_page.h"

namespace guanchao {

SearchPage::SearchPage(const QByteArray& body) : visible_(readHtmlPage(body).text) {}

std::optional<qint64> SearchPage::results(const CollectorSettings& settings) const {
    const QRegularExpressionMatch match = settings.results.match(visible_);
    if (match.hasMatch()) {
        bool isNumber = false;
        const qint64 number = match.captured(1).remove(u',').toLongLong(&isNumber);
        return isNumber ? std::optional(number) : std::nullopt;
    }
    const auto tells = [this](const QRegularExpression& pattern) {
        return !pattern.pattern().isEmpty() && pattern.match(visible_).hasMatch();
    };
    const bool none = tells(settings.noResults) && !tells(settings.person);
    return none ? std::optional<qint64>(0) : std::nullopt;
}

}  // namespace guanchao
