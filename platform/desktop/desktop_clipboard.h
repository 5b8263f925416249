// Clipboard of the desktop.
#pragma once

#include <QClipboard>
#include <QGuiApplication>

#include "platform/clipboard.h"

namespace guanchao {

class DesktopClipboard : public Clipboard {
public:
    void setText(const QString& text) override {
        QGuiApplication::clipboard()->clear();
        QGuiApplication::clipboard()->setText(text);
    }

    QString text() const override { return QGuiApplication::clipboard()->text(); }
};

}  // namespace guanchao
