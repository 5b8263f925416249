// The page of a stock's company profile that Form11 shows: its address and the window's caption.
// The host comes from f10url of tempcanshu in the main store, the path is fixed. Failed statements
// raise StoreError.
#pragma once

#include <QString>
#include <optional>

#include "base/globals.h"
#include "platform/dialogs.h"
#include "store/stores.h"

namespace guanchao {

struct F10Page {
    QString address;
    QString caption;
};

// Takes the current stock over. Nothing, after a message, where the store names no host.
std::optional<F10Page> takeF10Page(const Stores& stores, Globals& globals, Dialogs& dialogs);

// What the window says while its browser starts, where it has none and where the page didn't come.
QString openingWords(const F10Page& page);
QString outsideWords(const F10Page& page);
QString notLoadedWords(const F10Page& page);

}  // namespace guanchao
