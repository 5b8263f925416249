// Memberships of stocks in themes, as they are joined and left one by one: table dzhzhuti. Failed
// statements raise StoreError.
#pragma once

#include <QString>
#include <optional>

#include "store/connection.h"
#include "store/row_images.h"

namespace guanchao {

struct NewMember {
    QString theme;
    QString dm;
    QString jc;
    QString time;  // of joining, a time text
    // 关注度; without it that of new rows, as 相关度 always is.
    std::optional<qint16> attention = {};
};

bool isMember(Connection& mainStore, const QString& theme, const QString& dm);

void joinTheme(Connection& mainStore, const NewMember& member);

// False, and nothing is written, if the stock is a member already.
bool joinIfMissing(Connection& mainStore, const NewMember& member);

void leaveTheme(Connection& mainStore, const QString& theme, const QString& dm);

// For an edit of it.
RowScope membershipOf(const QString& theme, const QString& dm);

// When the themes were changed or imported last, for the label of the main window: table
// tempcanshu.
void stampThemes(Connection& mainStore, const QString& time);

}  // namespace guanchao
