// The text of an article: plain, in a comfortable size, its lines no longer than reads well however
// wide the window is.
#pragma once

#include <QPlainTextEdit>

#include "articles/body_text.h"

namespace guanchao {

class ArticleText : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ArticleText(QWidget* parent = nullptr);

    void setText(const QString& stored);
    // As it is to be stored: what was set, to the letter, until it is changed.
    QString text() const;

protected:
    QMimeData* createMimeDataFromSelection() const override;
    void resizeEvent(QResizeEvent* event) override;

private:
    BodyText body_;
};

}  // namespace guanchao
