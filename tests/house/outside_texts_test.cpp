// Names that came from outside: markup is shown as it is, and of millions of characters a few.
#include <QToolTip>

#include "base/values.h"
#include "formats/gbk.h"
#include "market/form21.h"
#include "tests/support/window_test.h"
#include "themes/form22.h"

namespace guanchao {

class OutsideTextsTest : public WindowTest {
protected:
    static void expectShort(const QString& text) {
        EXPECT_GT(text.size(), 50) << text.toStdString();
        EXPECT_LE(text.size(), longestShownName);
        EXPECT_TRUE(text.endsWith(u'…'));
    }
    // As a widget with a tool tip shows it.
    static const QLabel* tipOf(const QWidget& widget) {
        QToolTip::showText({}, widget.toolTip());
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->inherits("QTipLabel") && window->isVisible()) {
                return qobject_cast<QLabel*>(window);
            }
        }
        return nullptr;
    }

    const QString markup_ = u"<img src=x><b>题</b>"_s;
    const QString name_ = markup_ + QString(4'000'000, u'名');
};

TEST_F(OutsideTextsTest, OfAStore) {
    store_.addCode(u"SH600000"_s, name_, 10, 1);
    store_.addMember(name_, u"SH600000"_s);
    store_.run({u"update dzhzhuti set jc=zhutiname"_s});
    globals_.dangqiandm = u"SH600000"_s;
    globals_.dangqianjc = name_;
    open<Form22>();
    QApplication::processEvents();
    expectShort(view().model()->index(0, 2).data().toString());
    EXPECT_EQ(grid().textMatrix(1, 2), name_) << "the whole name is kept";
    edit(u"Text1"_s)->setText(u"SH600000"_s);
    QApplication::processEvents();
    find<QListWidget>(u"List1"_s)->sizeHintForColumn(0);
    click(u"Command9"_s);
    expectShort(label(u"Label7"_s));
    EXPECT_EQ(find<QLabel>(u"Label7"_s)->textFormat(), Qt::PlainText);
    grid().setToolTipText(name_);
    const QLabel* tip = tipOf(view());
    EXPECT_TRUE(tip->text().startsWith(markup_));
    EXPECT_LE(tip->text().size(), longestShownMessage);
    EXPECT_EQ(tip->textFormat(), Qt::PlainText);
}

TEST_F(OutsideTextsTest, OfAReply) {
    globals_.yingyongmulu = store_.folder();
    services_.quote = {{u"http://m"_s, {}}};
    http_.answer = [this](const QString&) {
        return gbkFromText(u"x=\""_s + name_ + u",9.9,10,10.5,11,9.8,0,0,1234500,2000000000"_s +
                           u",1"_s.repeated(20) + u",2026-11-24,10:30:00,00\";\n"_s);
    };
    globals_.dangqiandm = u"SH600000"_s;
    open<Form21>();
    auto* begin = find<QTimer>(u"Timer1"_s);
    until([&] { return begin->isActive(); });
    timeIsUp(begin);
    for (const QString& place : {u"Label5"_s, u"indexName"_s}) {
        expectShort(label(place));
        EXPECT_TRUE(label(place).startsWith(markup_)) << label(place).toStdString();
        EXPECT_EQ(find<QLabel>(place)->textFormat(), Qt::PlainText);
    }
    EXPECT_TRUE(form_->windowTitle().startsWith(u"分时行情——"_s + markup_));
    EXPECT_LE(form_->windowTitle().size(), longestShownName + 10);
}

}  // namespace guanchao
