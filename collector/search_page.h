// What the collector reads out of a page of a search engine: the number of results and the
// visible text. Pages come in UTF-8 or GBK, as they declare.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "collector/collector_settings.h"

namespace guanchao {

class SearchPage {
public:
    // The text by the declared charset; a page without one is UTF-8 if it can be.
    explicit SearchPage(const QByteArray& body);

    // Nothing for a page that tells neither a number nor that there are no results: a question
    // whether a person is asking, an error page.
    std::optional<qint64> results(const CollectorSettings& settings) const;

    const QString& text() const { return visible_; }

private:
    QString visible_;
};

}  // namespace guanchao
