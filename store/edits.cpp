#include "store/edits.h"

#include <algorithm>

namespace guanchao {

namespace {

bool canBe(const Edit& edit, Way way, const Removals& removals) {
    return !edit.removed || removals.canBe(*edit.removed, way);
}

}  // namespace

bool carryOut(const Edit& edit, Way way) {
    if (!edit.removed) {
        return exchangeRows(edit.rows, way);
    }
    return way == Way::back ? bringBackWhole(*edit.removed) : removeAgain(*edit.removed);
}

void Edits::push(Edit edit) {
    edit.number = ++made_;
    done_ << std::move(edit);
    if (done_.size() > mostEdits) {
        done_.removeFirst();
    }
    takenBack_.clear();
    emit changed();
}

void Edits::pushRemoval(const QString& name, const std::optional<RemovedRows>& removed) {
    if (removed) {
        push(Edit{.name = name, .removed = removed});
    }
}

std::optional<Edit> Edits::next(Way way) const {
    const QList<Edit>& edits = way == Way::back ? done_ : takenBack_;
    const auto found = std::find_if(edits.crbegin(), edits.crend(),
                                    [&](const Edit& it) { return canBe(it, way, removals_); });
    return found == edits.crend() ? std::nullopt : std::optional(*found);
}

// Where another edit was made meanwhile, it is no longer the last: its way on would be over that
// one.
void Edits::carriedOut(const Edit& edit, Way way) {
    const std::optional<Edit> last = next(way);
    const bool isLast = last && last->number == edit.number;
    if (edit.removed) {
        removals_.mark(*edit.removed, way);
    }
    QList<Edit>& others = of(way == Way::back ? Way::again : Way::back);
    if (isLast || way == Way::again) {
        others << edit;
    }
    drop(edit, way);
}

void Edits::drop(const Edit& edit, Way way) {
    of(way).removeIf([&](const Edit& it) { return it.number == edit.number; });
    emit changed();
}

EditInHand::~EditInHand() {
    if (!edit_.rows.isEmpty()) {
        edits_.push(std::move(edit_));
    }
}

void EditInHand::write(Connection& connection, const StoreFile& store,
                       const QList<RowScope>& scopes, const std::function<void()>& step) {
    Transaction transaction(connection);
    QList<EditedRows> edited;
    for (const RowScope& it : scopes) {
        edited << EditedRows{store, it, readImages(connection, QStringLiteral("main"), it), {}};
    }
    step();
    for (EditedRows& it : edited) {
        it.after = readImages(connection, QStringLiteral("main"), it.scope);
    }
    transaction.commit();
    edited.removeIf([](const EditedRows& it) { return it.before == it.after; });
    edit_.rows += edited;
}

}  // namespace guanchao
