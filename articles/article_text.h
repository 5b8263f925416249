// The text of an article: plain, in a comfortable size, its lines no longer than reads well however
// wide the window is.
#pragma once

#include <QPlainTextEdit>

namespace guanchao {

class ArticleText : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit ArticleText(QWidget* parent = nullptr);

    // As typed: unlike the plain text of the base class it keeps hard spaces.
    QString text() const;

protected:
    void resizeEvent(QResizeEvent* event) override;
};

}  // namespace guanchao
