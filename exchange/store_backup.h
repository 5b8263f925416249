// Copies of all stores at once, in the folder 备份. A copy is whole, checked and on the disk before
// it bears its name; one that a killed run has begun is none. Failures raise StoreError or
// OperationError and leave the copies that were there.
#pragma once

#include <QDate>
#include <functional>

#include "exchange/kept_copies.h"

namespace guanchao {

// What a disk must still have free beside a new copy.
inline constexpr qint64 spareBytes = qint64(256) << 20;

// How many bytes are free where a folder lies.
using FreeBytes = std::function<qint64(const QString& folder)>;
qint64 freeBytesOn(const QString& folder);

// Leaves whole stores in a folder that is given and empty.
using FillCopy = std::function<void(const QString& folder)>;

// Makes the folder of that name in `folder`, in place of one that is there; what `fill` leaves in
// it bears the name only when `fill` has returned.
void makeCopy(const QString& folder, const QString& name, const FillCopy& fill);

// The day's copy, unless it is there; then those go that are too many. Refuses, by OperationError,
// where too little of the disk would be left. `blockDone` may end it by raising. True if one was
// made.
bool makeDailyCopy(const Stores& stores, const QString& folder, const QDate& day,
                   const FreeBytes& freeBytes, const std::function<void()>& blockDone);

}  // namespace guanchao
