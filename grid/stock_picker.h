// 查找代码: the lookup behind every box in which a stock is typed.
#pragma once

#include <QString>
#include <QStringList>

#include "store/stores.h"

namespace guanchao {

// The candidates for digits of the code, initials of the short name or a code with its market
// prefix, each as "code  name&&", with 已退市 behind the name of one that is delisted; empty if
// there is none. Reads the code table of the main store.
QString chazhaodaima(const StoreFile& mainStore, const QString& text);

// The candidates as lines of a list.
QStringList candidateLines(const QString& candidates);

// The height of the candidate list in twips.
int candidateListHeight(const QString& candidates);

// Code and name of a chosen line.
QString stockOfCandidate(const QString& line);

// The code of a chosen line.
QString codeOfCandidate(const QString& line);

}  // namespace guanchao
