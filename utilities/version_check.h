// The check for a newer version of the program: silent unless there is one.
#pragma once

#include <QCoro/QCoroTask>
#include <QString>
#include <stop_token>

#include "base/globals.h"
#include "platform/dialogs.h"
#include "platform/http_client.h"
#include "platform/shell.h"

namespace guanchao {

// The version in a window caption such as "观潮台(V3.7)", with plain or full-width parentheses; 0
// if there is none.
double versionInCaption(const QString& caption);

class VersionCheck {
public:
    VersionCheck(const Globals& globals, const Service& vendor, HttpClient& http, Dialogs& dialogs,
                 Shell& shell)
        : globals_(globals), vendor_(vendor), http_(http), dialogs_(dialogs), shell_(shell) {}

    // Downloads the version file of the vendor's site into banben.ini of the application folder. If
    // it names a higher version than the caption, says so and opens its download page.
    QCoro::Task<> run(QString caption, std::stop_token stop);

private:
    const Globals& globals_;
    const Service& vendor_;
    HttpClient& http_;
    Dialogs& dialogs_;
    Shell& shell_;
};

}  // namespace guanchao
