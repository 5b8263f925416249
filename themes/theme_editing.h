// Adding to a theme and rewriting it from a typed list of codes, as Form6 does it: tables dzhzhuti,
// dmb and tempcanshu of the main store. Each run is one transaction, so that a failed statement
// (StoreError) leaves nothing of it behind, and can be taken back by Edits.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "store/edits.h"
#include "store/stores.h"

namespace guanchao {

// Shows how codes are typed; it is no code itself.
inline const QString sampleCodes = QStringLiteral("示例:sh600000,sz000001");

QString withoutSample(QString codes);

// What stands in the fields of the dialog.
struct ThemeFields {
    QString name;
    QString codes;      // separated by commas, "," or "，"
    QString attention;  // 关注度
};

// The fields as they go into the statements.
struct ThemeEntry {
    QString name;
    QStringList codes;
    qint16 attention = 0;
    QString time;
};

class ThemeEditing {
public:
    ThemeEditing(const Stores& stores, const Clock& clock, Dialogs& dialogs, Edits& edits);

    // The fields at the opening: of the theme, or of a new one if no stock bears the name.
    ThemeFields open(const QString& theme) const;

    // 添加: the stocks that the theme lacks join it. 修改: its stocks make room for the listed
    // ones. True if the run is done and the dialog may close.
    QCoro::Task<bool> add(ThemeFields fields, std::stop_token stop);
    bool rewrite(const ThemeFields& fields);

private:
    struct Run {
        QString activity;
        QString done;
        bool anew;  // the theme's stocks go first, and a code that is listed twice joins twice
    };

    bool themeExists(const QString& name) const;
    void write(const Run& run, const ThemeEntry& entry);
    // Nothing, and a word to the user, if a field can't be taken.
    std::optional<ThemeEntry> read(const ThemeFields& fields);

    const Stores& stores_;
    const Clock& clock_;
    Dialogs& dialogs_;
    Edits& edits_;
};

}  // namespace guanchao
