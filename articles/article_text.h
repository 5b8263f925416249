// The text of an article: plain, in a comfortable size, its lines no longer than reads well however
// wide the window is. The pieces of a huge paragraph are blocks of the document whose breaks are
// not in the text.
#pragma once

#include <QPlainTextEdit>

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
    void insertFromMimeData(const QMimeData* source) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void insert(QTextCursor& cursor, const QString& text);
    QString textBetween(int start, int end) const;

    QString stored_;
    int splitParagraphs_ = 0;
};

}  // namespace guanchao
