// Drafts: what an editor holds unsaved, put aside in a file of its own under the application
// folder, so that it outlives a program that is killed. A draft is gone once its article is saved
// or the user has thrown it away; what is there at a start was left by a crash.
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>

#include "articles/article_fields.h"

namespace guanchao {

struct Draft {
    ArticleFields read;   // as the editor had read or last saved the article
    ArticleFields typed;  // as the user left it
    QDateTime time;
};

struct LeftDraft {
    QString path;
    Draft draft;
};

// A path for the draft of one editor. Nothing is written yet.
QString newDraftPath(const QString& applicationFolder);

// Over the draft that is there. Raises OperationError.
void putAside(const QString& path, const Draft& draft);

// At a start, before an editor writes: the oldest first. Files that hold no draft don't count; what
// a killed program was just writing goes.
QList<LeftDraft> leftDrafts(const QString& applicationFolder);

}  // namespace guanchao
