#include "frame/looks.h"

#include <QFile>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

static void loadLooksResource() {
    Q_INIT_RESOURCE(looks);
}

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

QString styleSheet() {
    QFile file(u":/looks/dark.qss"_s);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QPalette darkPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(30, 32, 36));
    palette.setColor(QPalette::WindowText, QColor(214, 216, 220));
    palette.setColor(QPalette::Base, QColor(20, 21, 24));
    palette.setColor(QPalette::AlternateBase, QColor(26, 28, 32));
    palette.setColor(QPalette::Text, QColor(224, 226, 230));
    palette.setColor(QPalette::Button, QColor(48, 52, 58));
    palette.setColor(QPalette::ButtonText, QColor(224, 226, 230));
    palette.setColor(QPalette::Highlight, QColor(38, 79, 120));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(48, 52, 58));
    palette.setColor(QPalette::ToolTipText, QColor(224, 226, 230));
    palette.setColor(QPalette::PlaceholderText, QColor(124, 128, 136));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(110, 113, 120));
    }
    return palette;
}

QFont programFont() {
    QFont font;
    font.setFamilies({u"Noto Sans CJK SC"_s, u"Noto Sans SC"_s, u"Microsoft YaHei"_s});
    font.setPointSize(10);
    return font;
}

}  // namespace

void applyLooks(QApplication& application) {
    loadLooksResource();
    QApplication::setStyle(QStyleFactory::create(u"Fusion"_s));
    QApplication::setPalette(darkPalette());
    QApplication::setFont(programFont());
    application.setStyleSheet(styleSheet());
    QApplication::setWindowIcon(programIcon());
}

QIcon programIcon() {
    return QIcon(u":/looks/pet.png"_s);
}

QIcon searchIcon() {
    return QIcon(u":/looks/search.png"_s);
}

QIcon updateIcon() {
    return QIcon(u":/looks/update.png"_s);
}

}  // namespace guanchao
