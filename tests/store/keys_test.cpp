#include "store/keys.h"

#include <gtest/gtest.h>

#include <QSet>

#include "tests/support/qt_printers.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

TEST(Keys, TheTableIsAnInvolutionAndOtherCharactersPass) {
    const QString all = u"abcdefghijklmnopqrstuvwxyz0123456789"_s;
    const QString mapped = xiezhongzi(all);
    EXPECT_EQ(QSet<QChar>(mapped.begin(), mapped.end()), QSet<QChar>(all.begin(), all.end()));
    EXPECT_EQ(xiezhongzi(mapped), all);
    EXPECT_EQ(xiezhongzi(xiezhongzi(u"AbC-主9"_s)), u"abc-主9"_s) << "in small letters";
}

}  // namespace guanchao
