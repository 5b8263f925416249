// What the history builder tells its user of a failure: which file, what is the matter, what to do.
#pragma once

#include <QString>
#include <exception>

#include "research/history_store.h"

namespace guanchao {

// Why a history can't be built into these two files from that day data; empty if it can.
QString faultOfPlaces(const HistoryFiles& files, const QString& days);

QString builderFailure(const std::exception& failure);

}  // namespace guanchao
