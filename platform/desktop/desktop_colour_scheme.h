// From the settings portal of the desktop (org.freedesktop.appearance, color-scheme), without
// waiting for its answer.
#pragma once

#include <QDBusVariant>
#include <QObject>

#include "platform/colour_scheme.h"

namespace guanchao {

class DesktopColourScheme : public QObject, public ColourScheme {
    Q_OBJECT

public:
    DesktopColourScheme();

    std::optional<bool> isDark() const override { return isDark_; }
    void whenChanged(std::function<void()> changed) override { changed_ = std::move(changed); }

private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void take(const QVariant& value);

    std::optional<bool> isDark_;
    std::function<void()> changed_;
};

}  // namespace guanchao
