// What the user has edited in this run and can take back, the last first, and do again: rows as
// they stood before and after, kept in memory, and deletions of many rows, of which Removals keeps
// a copy. Belongs to the thread that shows.
#pragma once

#include <QList>
#include <QObject>
#include <functional>
#include <optional>

#include "store/removals.h"
#include "store/row_images.h"

namespace guanchao {

// The last ones; older ones can't be taken back any more.
inline constexpr int mostEdits = 100;

struct Edit {
    QString name;             // 修改主题名称 白酒→黄酒
    QString nameBefore = {};  // of what was renamed
    QString nameAfter = {};
    QList<EditedRows> rows = {};
    std::optional<RemovedRows> removed = {};
    int number = 0;  // by which Edits knows it
};

// For a worker. False if the rows aren't as the edit has left them; nothing is written then. Raises
// StoreError.
bool carryOut(const Edit& edit, Way way);

class Edits : public QObject {
    Q_OBJECT

public:
    explicit Edits(Removals& removals) : removals_(removals) {}

    // One that is done. What was taken back before can't be done again any more.
    void push(Edit edit);
    // Rows that are deleted, if there were any.
    void pushRemoval(const QString& name, const std::optional<RemovedRows>& removed);

    // The one that is taken back next, or done again next. A deletion whose copy has gone, or has
    // come back by the button of its window, is none.
    std::optional<Edit> next(Way way) const;

    // It was taken back, or done again.
    void carriedOut(const Edit& edit, Way way);
    // It can't be carried out and is forgotten.
    void drop(const Edit& edit, Way way);

signals:
    void changed();

private:
    QList<Edit>& of(Way way) { return way == Way::back ? done_ : takenBack_; }

    Removals& removals_;
    int made_ = 0;
    QList<Edit> done_;  // the latest last
    QList<Edit> takenBack_;
};

// An edit that is being carried out. What it has written when this ends can be taken back, also
// where a later step of it has failed.
class EditInHand {
public:
    EditInHand(Edits& edits, Edit edit) : edits_(edits), edit_(std::move(edit)) {}
    ~EditInHand();
    EditInHand(const EditInHand&) = delete;
    EditInHand& operator=(const EditInHand&) = delete;

    // One transaction, on a connection to the store.
    void write(Connection& connection, const StoreFile& store, const QList<RowScope>& scopes,
               const std::function<void()>& step);

private:
    Edits& edits_;
    Edit edit_;
};

}  // namespace guanchao
