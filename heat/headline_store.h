// 新闻标题: the headlines behind the news counts of the day, in the table xinwenbiaoti, which the
// collector adds to the heat store with the first of them. Failed statements raise StoreError.
#pragma once

#include <QList>
#include <QString>

#include "services/headlines_eastmoney.h"
#include "store/stores.h"

namespace guanchao {

// So many of a word are kept, the newest.
inline constexpr qsizetype mostKeptHeadlines = 100;

// In place of what is kept of the word; headlines of earlier days go, whatever their words.
void keepHeadlines(Connection& heat, const QString& keyword, const QString& day,
                   const QList<Headline>& headlines);

// As they were kept; none for another day, or where nothing was ever kept.
QList<Headline> readHeadlines(const StoreFile& heat, const QString& keyword, const QString& day);

}  // namespace guanchao
