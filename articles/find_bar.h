// 查找: the bar under a text in which a word is looked for. It finds while it is typed, goes on at
// the other end of the text, and closes by Esc, from the text too.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace guanchao {

class FindBar : public QWidget {
    Q_OBJECT

public:
    explicit FindBar(QWidget* parent = nullptr);

    // The text must outlive the bar.
    void setTextEdit(QPlainTextEdit& text);

    // Shows the bar, with what is selected in the text as its word.
    void open();
    void findNext() { find({}); }
    void findPrevious() { find(QTextDocument::FindBackward); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void wordChanged();
    void find(QTextDocument::FindFlags direction);
    void leave();

    QPlainTextEdit* text_ = nullptr;
    QLineEdit* word_;
    QLabel* answer_;
};

}  // namespace guanchao
