#include "collector/search_page.h"

#include "formats/page_text.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString visibleText(QString page) {
    static const QRegularExpression unseen(
        u"<(script|style|title)\\b.*?</\\1\\s*>|<!--.*?-->"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression tag(u"<[^>]*>"_s);
    static const QRegularExpression blank(u"&nbsp;|&#160;|\u00a0"_s);
    // Engines set the searched words in <em> in the middle of a word: a tag leaves no gap.
    return page.remove(unseen).remove(tag).replace(blank, u" "_s);
}

}  // namespace

SearchPage::SearchPage(const QByteArray& body) : visible_(visibleText(pageText(body))) {}

std::optional<qint64> SearchPage::results(const CollectorSettings& settings) const {
    const QRegularExpressionMatch match = settings.results.match(visible_);
    if (match.hasMatch()) {
        bool isNumber = false;
        const qint64 number = match.captured(1).remove(u',').toLongLong(&isNumber);
        return isNumber ? std::optional(number) : std::nullopt;
    }
    const bool none =
        !settings.noResults.pattern().isEmpty() && settings.noResults.match(visible_).hasMatch();
    return none ? std::optional<qint64>(0) : std::nullopt;
}

int SearchPage::count(const QString& word) const {
    return static_cast<int>(visible_.count(word));
}

}  // namespace guanchao
