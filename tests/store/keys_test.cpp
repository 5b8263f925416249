#include "store/keys.h"

#include <gtest/gtest.h>

#include <QSet>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(Keys, TheTableIsAnInvolutionWithoutAFixedCharacter) {
    const QString all = u"abcdefghijklmnopqrstuvwxyz0123456789"_s;
    const QString mapped = xiezhongzi(all);
    EXPECT_EQ(QSet<QChar>(mapped.begin(), mapped.end()), QSet<QChar>(all.begin(), all.end()));
    for (qsizetype at = 0; at < all.size(); ++at) {
        EXPECT_NE(mapped[at], all[at]);
    }
    EXPECT_EQ(xiezhongzi(mapped), all);
}

TEST(Keys, SeedsAreLoweredAndOtherCharactersPass) {
    EXPECT_EQ(xiezhongzi(xiezhongzi(u"AbC-主9"_s)), u"abc-主9"_s);
    EXPECT_EQ(xiezhongzi(u"-主 "_s), u"-主 "_s);
    EXPECT_EQ(xiezhongzi(QString()), QString());
    EXPECT_EQ(heatSeed.size(), 16);
    EXPECT_EQ(articleSeed.size(), 15);
}

}  // namespace guanchao
