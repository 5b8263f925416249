// The commands that every view of a grid has: 复制, 导出表格, 在表中查找.
#include <QClipboard>
#include <QLabel>
#include <QTemporaryDir>

#include "grid/row_menu.h"
#include "tests/grid/grid_view_fixture.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "tests/support/outcome_of.h"

namespace guanchao {

TEST_F(GridViewTest, TheSelectedRowsAreCopiedAsAllRowsAreExported) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    const auto copied = [this](Qt::KeyboardModifiers keys, int row) {
        QTest::mouseClick(view_.viewport(), Qt::LeftButton, keys, cellOf(view_, row, 2));
        QTest::keyClick(&view_, Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    };
    openHeaderMenu();
    chooseInMenu(u"日期"_s);
    EXPECT_EQ(copied({}, 2), u"2\t甲\t3.00\n"_s);
    EXPECT_EQ(copied(Qt::ControlModifier, 1), u"\t名称\t涨幅\n1\t乙\t1.50\n2\t甲\t3.00\n"_s);
    pressMenuKey();
    EXPECT_EQ(menuWords(), u"复制 Ctrl+C|在表中查找 F3|选择列…"_s)
        << "nothing to write a file with";
    closeMenu();

    const QTemporaryDir folder;
    FakeDialogs dialogs;
    FakeFailures failures;
    view_.setAccessibleName(u"主题表"_s);
    view_.allowExport(dialogs, failures);
    QAction open(u"打开"_s), remove(u"删除"_s), removeAll(u"全删"_s), refresh(u"刷新"_s);
    fillRowMenu(menu_, {&open, &remove, &removeAll, &refresh}, {&remove, &removeAll});
    view_.setRowMenu(menu_);
    const auto exportTo = [&](const QString& path) {
        dialogs.picked = path;
        clickCell(view_, 1, 1, Qt::RightButton);
        chooseInMenu(u"导出表格…"_s);
        return dialogs.shown.last();
    };
    pressMenuKey();
    EXPECT_EQ(menuWords(),
              u"打开|-|删除|全删|-|刷新|-|复制 Ctrl+C|导出表格…|在表中查找 F3|选择列…"_s);
    closeMenu();
    EXPECT_TRUE(exportTo(QString()).endsWith(u"|主题表.csv|CSV 表格(*.csv)"_s)) << "none picked";
    const QString path = folder.filePath(u"a.csv"_s);
    EXPECT_EQ(exportTo(path), u"观潮台|已导出 3 行到："_s + path);
    EXPECT_EQ(contentOf(path),
              u"\uFEFF,名称,涨幅\r\n1,乙,1.50\r\n2,甲,3.00\r\n3,丙,4.50\r\n"_s.toUtf8());
    exportTo(folder.filePath(u"没有/a.csv"_s));
    ASSERT_EQ(failures.texts.size(), 1);
    EXPECT_TRUE(failures.texts[0].contains(u"没有这个文件夹"_s)) << failures.texts[0].toStdString();

    dialogs.shown.clear();
    fill(QStringList(3000, u"甲"_s));
    dialogs.picked = folder.filePath(u"b.csv"_s);
    clickCell(view_, 1, 1, Qt::RightButton);
    chooseInMenu(u"导出表格…"_s);
    fill({u"乙"_s});
    until([&] { return dialogs.shown.size() == 2; });
    EXPECT_EQ(dialogs.shown[1], u"观潮台|导出时列表变了，文件没有写入。请再导出一次。"_s);
    EXPECT_FALSE(QFile::exists(dialogs.picked));
    fill(QStringList(3000, u"甲"_s));
    clickCell(view_, 1, 1, Qt::RightButton);
    chooseInMenu(u"导出表格…"_s);
    until([&] { return dialogs.shown.size() == 4; });
    EXPECT_EQ(contentOf(dialogs.picked).count("\r\n"), 3001);
}

TEST_F(GridViewTest, ATextIsFoundInTheShownCells) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view_));
    QStringList names(40, u"甲"_s);
    names[4] = names[39] = u"Ab"_s;
    names[20] = u"ac"_s;
    fill(names);
    clickCell(view_, 1, 1);
    const auto* line = view_.findChild<QWidget*>(u"findLine"_s);
    auto* text = line->findChild<QLineEdit*>();
    const auto* answer = line->findChild<QLabel*>();
    const auto key = [](Qt::Key pressed, Qt::KeyboardModifiers keys = {}) {
        QTest::keyClick(QApplication::focusWidget(), pressed, keys);
    };
    const auto type = [](const char* letters) {
        QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(letters));
    };
    const auto fromTheGrid = [&] {
        clickCell(view_, 30, 1);
        key(Qt::Key_F3);
    };
    const QString end = u"已到结尾，从开头接着找"_s;
    const QString begin = u"已到开头，从结尾接着找"_s;
    const std::tuple<const char*, std::function<void()>, bool, int, QString> acts[] = {
        {"F3", [&] { key(Qt::Key_F3); }, true, 1, {}},
        {"typed", [&] { type("a"); }, true, 5, {}},
        {"a longer word, there too", [&] { type("b"); }, true, 5, {}},
        {"F3 for the next one", [&] { key(Qt::Key_F3); }, true, 40, {}},
        {"round", [&] { key(Qt::Key_Return); }, true, 5, end},
        {"back", [&] { key(Qt::Key_F3, Qt::ShiftModifier); }, true, 40, begin},
        {"a word that none has", [&] { type("x"); }, true, 40, u"没有找到"_s},
        {"the word is shorter", [&] { key(Qt::Key_Backspace); }, true, 40, {}},
        {"Down is no key of the grid", [&] { key(Qt::Key_Down); }, true, 40, {}},
        {"from the grid", fromTheGrid, true, 40, {}},
        {"Esc in the grid", [&] { key(Qt::Key_Escape); }, false, 40, {}},
        {"slash", [&] { key(Qt::Key_Slash); }, true, 40, {}},
        {"typed over", [&] { type("AC"); }, true, 21, end},
        {"Esc in the line", [&] { key(Qt::Key_Escape); }, false, 21, end},
        {"Down is the grid's", [&] { key(Qt::Key_Down); }, false, 22, end},
    };
    for (const auto& [name, act, isOpen, row, words] : acts) {
        act();
        EXPECT_EQ(line->isVisible(), isOpen) << name;
        EXPECT_EQ(selectedRow(), row) << name;
        EXPECT_EQ(answer->text(), words) << name;
        if (isOpen) {
            const int edge = line->geometry().top() - view_.viewport()->y();
            EXPECT_LT(view_.visualRect(view_.currentIndex()).bottom(), edge) << name;
        }
    }
    EXPECT_TRUE(text->text() == u"AC"_s && view_.hasFocus());
}

}  // namespace guanchao
