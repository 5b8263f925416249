// The main window on a store of two themes.
#pragma once

#include "app/form2.h"
#include "tests/support/window_test.h"

namespace guanchao {

class Form2Test : public WindowTest {
protected:
    Form2Test() {
        store_.run(
            {u"insert into dmb(dm,numdm,jc,shenmu,zhangfu) values"
             u"('SH600000','600000','浦发银行','pfyh',2),"
             u"('SH600519','600519','贵州茅台','gzmt',-1)"_s});
        store_.addMember(u"银行"_s, u"SH600000"_s);
        store_.addMember(u"白酒"_s, u"SH600519"_s);
        form_ = &main_;
        main_.resize(1200, 700);
    }

    void load() {
        main_.Form_Load();
        main_.show();
        QApplication::processEvents();
    }

    // More than fit into one request.
    void addManyCodes() {
        for (int at = 0; at < 120; ++at) {
            store_.run({u"insert into dmb(dm) values('SH%1')"_s.arg(601000 + at)});
        }
    }
    void beginMonitoring() {
        timeIsUp(timer(u"Timer1"_s));
        until([this] { return timer(u"Timer2"_s)->isActive(); });
        EXPECT_FALSE(timer(u"Timer1"_s)->isActive());
    }
    QTimer* timer(const QString& name) { return find<QTimer>(name); }
    void click(const QString& gridName, int row, int col, Qt::MouseButton button = Qt::LeftButton) {
        clickCell(view(gridName), row, col, button);
    }
    // Keys reach the fields and the shortcuts of a window that is the active one.
    void activate() {
        main_.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&main_));
    }
    void press(const QString& theme, const QString& dm, const QString& jc) {
        globals_.dangqianzhuti = theme;
        globals_.dangqiandm = dm;
        globals_.dangqianjc = jc;
    }

    Form2 main_{environment_, windows_, desktop_};
};

}  // namespace guanchao
