// A text box in which a stock is typed, with the list of candidates that opens under it. A press
// beside both closes the list, and so do Tab and another window.
#pragma once

#include <QLineEdit>
#include <QListWidget>
#include <QObject>
#include <QTimer>

#include "store/stores.h"

namespace guanchao {

class PickerBox : public QObject {
    Q_OBJECT

public:
    // Candidates are read from `mainStore` at every change of the text; while another holds it, a
    // little later.
    PickerBox(QLineEdit& box, QListWidget& list, const StoreFile& mainStore, QObject* parent);

    // For a box that only tells the code and the name: the list opens above it, and a choice puts
    // its whole line there.
    void showWholeLinesAbove() { wholeLinesAbove_ = true; }

    // The list shows no more than the first candidates.
    void showAtMost(int lines) { mostLines_ = lines; }

    // The first candidate, if there is one, takes the place of the text; the list is hidden.
    void takeFirst();

    void hideList();
    bool listIsOpen() const { return isOpen_; }

    // Puts a text into the box as if it had been typed: the list opens even for the text that is
    // there already.
    void setText(const QString& text);
    // The same without the list.
    void putText(const QString& text);

signals:
    // A candidate was taken; the box holds its code, or its line, and the list is hidden.
    void chosen();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void boxChanged();
    void showCandidates(const QString& candidates);
    void listClicked();
    void listShown(bool shown);
    bool leaves(const QObject* watched, const QEvent& event) const;
    bool takeKey(const QObject* watched, int key);
    void placeList(const QString& candidates);

    QLineEdit& box_;
    QListWidget& list_;
    bool isOpen_ = false;  // nothing is asked of the list after its end
    const StoreFile& mainStore_;
    bool wholeLinesAbove_ = false;
    int mostLines_ = -1;  // below 0: no limit
    QTimer retry_;        // to the next try of a reading
};

}  // namespace guanchao
