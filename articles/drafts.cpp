#include "articles/drafts.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUuid>
#include <algorithm>
#include <optional>

#include "base/files.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString draftsFolder(const QString& applicationFolder) {
    return applicationFolder + u"草稿/"_s;
}

QJsonObject written(const ArticleFields& fields) {
    return {{u"id"_s, fields.id},
            {u"year"_s, fields.date.year},
            {u"month"_s, fields.date.month},
            {u"day"_s, fields.date.day},
            {u"author"_s, fields.author},
            {u"category"_s, fields.category},
            {u"subcategory"_s, fields.subcategory},
            {u"title"_s, fields.title},
            {u"body"_s, fields.body}};
}

ArticleFields fieldsOf(const QJsonValue& text) {
    return {text[u"id"].toString(),
            {text[u"year"].toString(), text[u"month"].toString(), text[u"day"].toString()},
            text[u"author"].toString(),
            text[u"category"].toString(),
            text[u"subcategory"].toString(),
            text[u"title"].toString(),
            text[u"body"].toString()};
}

// What a killed program was writing: no draft yet, but in plain words.
void removeBegun(const QString& folder) {
    for (const QString& name : QDir(folder).entryList({u"*.json.*"_s}, QDir::Files)) {
        QFile::remove(folder + name);
    }
}

std::optional<Draft> draftIn(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QJsonObject draft = QJsonDocument::fromJson(file.readAll()).object();
    const QDateTime time = QDateTime::fromString(draft[u"time"].toString(), Qt::ISODate);
    if (!time.isValid()) {
        return std::nullopt;
    }
    return Draft{fieldsOf(draft[u"read"]), fieldsOf(draft[u"typed"]), time};
}

}  // namespace

QString newDraftPath(const QString& applicationFolder) {
    return draftsFolder(applicationFolder) + QUuid::createUuid().toString(QUuid::WithoutBraces) +
           u".json"_s;
}

void putAside(const QString& path, const Draft& draft) {
    // The store of articles is encrypted and a draft isn't: it is for its user's eyes only.
    const QString folder = QFileInfo(path).path();
    makeFolder(folder);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QJsonObject content{{u"time"_s, draft.time.toString(Qt::ISODate)},
                              {u"read"_s, written(draft.read)},
                              {u"typed"_s, written(draft.typed)}};
    replaceFile(path, QJsonDocument(content).toJson());
}

QList<LeftDraft> leftDrafts(const QString& applicationFolder) {
    const QString folder = draftsFolder(applicationFolder);
    removeBegun(folder);
    QList<LeftDraft> left;
    for (const QFileInfo& file : QDir(folder).entryInfoList({u"*.json"_s}, QDir::Files)) {
        if (const std::optional<Draft> draft = draftIn(file.filePath())) {
            left << LeftDraft{file.filePath(), *draft};
        }
    }
    std::ranges::stable_sort(left, {}, [](const LeftDraft& it) { return it.draft.time; });
    return left;
}

}  // namespace guanchao
