#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QScopeGuard>
#include <utility>

#include "app/form2.h"
#include "articles/article_text.h"
#include "articles/body_text.h"
#include "articles/find_bar.h"
#include "articles/form26.h"
#include "articles/form27.h"
#include "frame/application.h"
#include "frame/entry_box.h"
#include "platform/desktop/desktop_dialogs.h"
#include "tests/support/qt_printers.h"
#include "tests/support/test_environment.h"
#include "themes/form30.h"

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

class ArticleWindowsTest : public ::testing::Test, protected TestEnvironment {
protected:
    ArticleWindowsTest() {
        globals_.yingyongmulu = store_.folder();
        store_.addArticle(u"'2016-03-31','张三','主题','白酒','一','ABC x abc'"_s);
        store_.addArticle(u"'2016-05-31','李四','个股','SH600519贵州茅台','二','二'"_s);
        store_.addArticle(u"'2016-04-02','张三','主题','机器人','三','三'"_s);
    }
    ~ArticleWindowsTest() override { dialogs_.answer = true; }

    template <typename Form>
    static QList<Form*> shown() {
        QApplication::processEvents();
        QList<Form*> forms;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* form = qobject_cast<Form*>(window); form && form->isVisible()) {
                forms << form;
            }
        }
        return forms;
    }

    Form27* browse() {
        windows_.openAnew<Form27>();
        return shownWindow<Form27>();
    }
    Form26* edit(int id) {
        Form26* form = load(id);
        QApplication::processEvents();
        return form;
    }
    // The only editor. Lets no event happen: its timers are real.
    Form26* load(int id) {
        globals_.dangqianwenzhang = id;
        windows_.openAnother<Form26>();
        return shownWindow<Form26>();
    }

    static GridView& view(QWidget* form) { return *form->findChild<GridView*>(); }
    static ResultGrid& grid(QWidget* form) { return gridOf(view(form)); }
    static QString text(QWidget* form, const QString& box) {
        return form->findChild<EntryBox*>(box)->currentText();
    }
    static void pick(QWidget* form, const QString& box, int line) {
        auto* combo = form->findChild<EntryBox*>(box);
        combo->setCurrentIndex(line);
        emit combo->activated(line);
    }
    static void push(QWidget* form, const QString& name) {
        form->findChild<QPushButton*>(name)->click();
    }
    static void tick(QWidget* form, const QString& name) {
        auto* timer = form->findChild<QTimer*>(name);
        EXPECT_TRUE(timer->isActive()) << name.toStdString();
        timeIsUp(timer);
        EXPECT_FALSE(timer->isActive()) << name.toStdString();
    }
    static QString body(QWidget* form) { return form->findChild<ArticleText*>()->text(); }
};

TEST_F(ArticleWindowsTest, TheEntriesHandTheirContextOver) {
    Form2 main(environment_, windows_, desktop_);
    globals_.dangqianzhuti = u"白酒"_s;
    globals_.dangqiandm = u"SH600519"_s;
    globals_.dangqianjc = u"贵州茅台"_s;
    Form30 watchlist(environment_, windows_);
    const struct {
        QWidget& window;
        QString entry, context;
        int rows;
    } cases[] = {
        {main, u"编辑主题文章"_s, u"主题|白酒"_s, 1},
        {main, u"操作个股文章"_s, u"个股|SH600519贵州茅台"_s, 1},
        {watchlist, u"操作个股文章"_s, u"个股|SH600519贵州茅台"_s, 1},
        {main, u"文章管理器"_s, u"|"_s, 3},
    };
    for (const auto& it : cases) {
        it.window.findChild<QAction*>(it.entry)->trigger();
        const QList<Form27*> forms = shown<Form27>();
        ASSERT_EQ(forms.size(), 1);
        EXPECT_EQ(text(forms[0], u"Combo7"_s) + u'|' + text(forms[0], u"Combo8"_s), it.context);
        EXPECT_EQ(forms[0]->findChild<QCheckBox*>()->isChecked(), it.context == u"|"_s);
        EXPECT_EQ(forms[0]->findChild<EntryBox*>(u"Combo1"_s)->isEnabled(), it.context != u"|"_s);
        EXPECT_EQ(grid(forms[0]).rows(), it.rows + 1) << it.entry.toStdString();
    }
}

TEST_F(ArticleWindowsTest, TheBrowserQueriesByItsBoxes) {
    Form27* form = browse();
    ASSERT_TRUE(form);
    form->findChild<QCheckBox*>()->setChecked(false);
    EXPECT_EQ(grid(form).rows(), 4);
    pick(form, u"Combo7"_s, form->findChild<EntryBox*>(u"Combo7"_s)->findText(u"主题"_s));
    EXPECT_EQ(form->findChild<EntryBox*>(u"Combo8"_s)->count(), 2);
    push(form, u"Command1"_s);
    EXPECT_EQ(grid(form).rows(), 3);
    pick(form, u"Combo5"_s, 3);
    EXPECT_EQ(text(form, u"Combo6"_s), u"30"_s) << "the day follows the month";
    QTest::keyClick(form->findChild<EntryBox*>(u"Combo9"_s), Qt::Key_Return);
    EXPECT_EQ(grid(form).textMatrix(1, 6), u"三"_s) << "Enter queries";
    form->findChild<QAction*>(u"kkshuaxin"_s)->trigger();
    EXPECT_EQ(grid(form).rows(), 4);
    EXPECT_EQ(text(form, u"Combo7"_s), u"主题"_s) << "the boxes keep their text";
    clickHeader(view(form), 2);
    EXPECT_EQ(grid(form).textMatrix(1, 0) + grid(form).textMatrix(1, 6), u"1一"_s);
}

TEST_F(ArticleWindowsTest, TheStockPickerOnlyTells) {
    store_.addCode(u"SH600519"_s, u"贵州茅台"_s, 10, 1);
    Form27* form = browse();
    auto* box = form->findChild<QLineEdit*>(u"Text3"_s);
    auto* list = form->findChild<QListWidget*>(u"List1"_s);
    QTest::keyClicks(box, u"6005"_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(0)).center());
    EXPECT_EQ(box->text(), u"SH600519  贵州茅台"_s);
    box->setText(u"600519"_s);
    QTest::mouseClick(form, Qt::LeftButton, {}, QPoint(3, 3));
    EXPECT_FALSE(list->isVisible());
}

TEST_F(ArticleWindowsTest, ArticlesOpenSideBySide) {
    Form27* form = browse();
    push(form, u"Command3"_s);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|请先选中一篇文章！"_s});
    clickCell(view(form), 2, 1);
    EXPECT_EQ(grid(form).markedRow(), 2);
    push(form, u"Command2"_s);
    ASSERT_EQ(shown<Form26>().size(), 1);
    EXPECT_EQ(body(shown<Form26>()[0]), u"三"_s) << "the article held is opened";
    form->findChild<EntryBox*>(u"Combo7"_s)->setText(u"笔记"_s);
    push(form, u"Command2"_s);
    push(form, u"Command3"_s);
    QTest::mouseDClick(view(form).viewport(), Qt::LeftButton, {}, cellOf(view(form), 2, 1));
    QStringList labels;
    for (Form26* editor : shown<Form26>()) {
        labels << editor->findChild<QLabel*>(u"Label7"_s)->text() + text(editor, u"Combo4"_s);
    }
    labels.sort();
    EXPECT_EQ(labels, QStringList({u"3主题"_s, u"3主题"_s, u"3主题"_s, u"id笔记"_s}));
    QTest::mousePress(view(form).viewport(), Qt::LeftButton, {}, cellOf(view(form), 1, 1));
    QTest::mouseMove(view(form).viewport(), cellOf(view(form), 3, 1));
    QTest::mouseRelease(view(form).viewport(), Qt::LeftButton, {}, cellOf(view(form), 3, 1));
    EXPECT_EQ(view(form).currentIndex().row(), 0) << "drawing the mouse chooses nothing";
    clickCell(view(form), 1, 1, Qt::RightButton);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->actions().size(), 4);
    menu->close();
    trigger(form, u"删除本篇"_s);
    EXPECT_EQ(grid(form).rows(), 3);
    openWindows_.closeAll();
    EXPECT_TRUE(shown<Form26>().isEmpty());
}

TEST_F(ArticleWindowsTest, TheEditorMovesSavesAndFlashes) {
    Form26* form = edit(1);
    ASSERT_TRUE(form);
    EXPECT_EQ(text(form, u"Combo7"_s), u"3  三"_s) << "the first of the same author";
    EXPECT_EQ(text(form, u"Combo9"_s), QString());
    pick(form, u"Combo7"_s, 0);
    EXPECT_EQ(body(form), u"ABC x abc"_s) << "the move waits for its timer";
    tick(form, u"Timer3"_s);
    EXPECT_EQ(body(form), u"三"_s);
    EXPECT_EQ(text(form, u"Combo7"_s), u"3  三"_s) << "a move does not refill the lists";
    QTest::keyClick(form->findChild<EntryBox*>(u"Combo7"_s), Qt::Key_Return);
    tick(form, u"Timer3"_s);
    form->findChild<EntryBox*>(u"Combo10"_s)->setText(u"O'N"_s);
    push(form, u"Command3"_s);
    EXPECT_EQ(text(form, u"Combo10"_s), u"ON"_s);
    auto* flash = form->findChild<QLabel*>(u"Label3"_s);
    EXPECT_TRUE(flash->isVisible());
    EXPECT_EQ(flash->text(), u"修改完毕!"_s);
    tick(form, u"Timer1"_s);
    EXPECT_FALSE(flash->isVisible());
    push(form, u"Command2"_s);
    EXPECT_EQ(form->findChild<QLabel*>(u"Label7"_s)->text(), u"4"_s);
    EXPECT_EQ(flash->text(), u"添加完毕!"_s);
    dialogs_.shown.clear();
    push(form, u"Command4"_s);
    EXPECT_EQ(dialogs_.shown.size(), 2);
    EXPECT_TRUE(shown<Form26>().isEmpty());
}

// Real boxes, answered by real keys alone.
TEST_F(ArticleWindowsTest, ExitAndEnterOverAndOverKeepAnUnsavedArticle) {
    const QString end = u"点“确定”退出，点“取消”进入托盘。"_s;
    const QString lose = u"这篇文章有修改还没有保存，确实要放弃这些修改吗?"_s;
    DesktopDialogs boxes;
    dialogs_.boxes = &boxes;
    const auto noBoxes = qScopeGuard([this] { dialogs_.boxes = nullptr; });
    Form2 main(environment_, windows_, desktop_);
    const auto exit = [&main](QPointer<Form26>&) { main.close(); };
    const auto fromTray = [&main](QPointer<Form26>&) {
        main.findChild<QAction*>(u"tuopanexit"_s)->trigger();
    };
    const auto escape = [](QPointer<Form26>& form) {
        QTest::keyClick(form.data(), Qt::Key_Escape);
    };
    const auto move = [](QPointer<Form26>& form) { pick(form, u"Combo7"_s, 0); };
    const struct {
        const char* name;
        std::function<void(QPointer<Form26>&)> act;
        QList<Qt::Key> keys;
        QStringList boxes;
        bool kept, ends;
    } cases[] = {
        {"exit", exit, {Qt::Key_Return, Qt::Key_Return}, {end, lose}, true, false},
        {"hidden in the tray", exit, {Qt::Key_Escape, Qt::Key_Return}, {end, lose}, true, false},
        {"exit from the tray", fromTray, {Qt::Key_Return}, {lose}, true, false},
        {"closed by Esc", escape, {Qt::Key_Return}, {lose}, true, false},
        {"another article", move, {Qt::Key_Enter}, {lose}, true, false},
        {"thrown away",
         exit,
         {Qt::Key_Return, Qt::Key_Left, Qt::Key_Return},
         {end, lose},
         false,
         true},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        main.show();
        QPointer<Form26> form = edit(1);
        QTest::keyClicks(form->findChild<ArticleText*>(), u"x"_s);
        QList<Qt::Key> keys = it.keys;
        QStringList texts;
        QTimer user;
        user.callOnTimeout([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box && texts.value(texts.size() - 1) != box->text()) {
                texts << box->text();
            }
            if (box) {
                QTest::keyClick(box->windowHandle(),
                                keys.isEmpty() ? Qt::Key_Escape : keys.takeFirst());
            }
        });
        user.start(1);
        it.act(form);
        EXPECT_TRUE(keys.isEmpty());
        EXPECT_EQ(texts, it.boxes);
        EXPECT_EQ(form && form->isVisible(), it.kept);
        EXPECT_TRUE(!it.kept || body(form).contains(u'x'));
        EXPECT_TRUE(!form || !form->findChild<QTimer*>(u"Timer3"_s)->isActive()) << "no move";
        EXPECT_EQ(!std::exchange(processes_.ended, {}).isEmpty(), it.ends);
        if (form) {
            form->findChild<ArticleText*>()->undo();
        }
        EXPECT_TRUE(openWindows_.closeAll());
        EXPECT_EQ(texts, it.boxes) << "what was taken back is not asked for";
    }
}

// 退出 in the tray while a box of an editor with unsaved text stands.
TEST_F(ArticleWindowsTest, TheEndOfTheProgramWaitsForTheAnswer) {
    const auto escape = [](Form26* form) { QTest::keyClick(form, Qt::Key_Escape); };
    const auto remove = [](Form26* form) { push(form, u"Command4"_s); };
    const struct {
        const char* name;
        std::function<void(Form26*)> ask;
        bool answer;
        int questions;
        bool ends;
    } cases[] = {
        {"Esc, discarded", escape, true, 1, true},
        {"Esc, kept", escape, false, 1, false},
        {"a deletion that is refused", remove, false, 2, false},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        Form2 main(environment_, windows_, desktop_);
        main.show();
        const QPointer<Form26> form = load(1);
        QTest::keyClicks(form->findChild<ArticleText*>(), u"x"_s);
        dialogs_.answer = it.answer;
        dialogs_.onAsk = [&] {
            dialogs_.onAsk = nullptr;
            main.findChild<QAction*>(u"tuopanexit"_s)->trigger();
            EXPECT_EQ(dialogs_.shown.size(), 1) << "no box over another";
        };
        it.ask(form);
        QCoreApplication::sendPostedEvents(&main);
        EXPECT_EQ(dialogs_.shown.size(), it.questions);
        EXPECT_EQ(!processes_.ended.isEmpty(), it.ends);
        EXPECT_EQ(form && form->isVisible(), !it.ends);
        dialogs_.shown.clear();
        processes_.ended.clear();
        dialogs_.answer = true;
        openWindows_.closeAll();
        QCoreApplication::sendPostedEvents(&main);
        EXPECT_TRUE(processes_.ended.isEmpty()) << "an end that was refused does not come later";
        dialogs_.shown.clear();
    }
}

TEST_F(ArticleWindowsTest, AnArticleDeletedElsewhereClosesItsWindow) {
    Form26* form = edit(1);
    store_.stores.article.open().execute(u"delete from wenzhang where id=3"_s);
    pick(form, u"Combo7"_s, 0);
    tick(form, u"Timer3"_s);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|此文章已删除!"_s});
    tick(form, u"Timer2"_s);
    EXPECT_TRUE(shown<Form26>().isEmpty());
    form = load(3);
    ASSERT_TRUE(form) << "the load finishes first";
    tick(form, u"Timer2"_s);
    EXPECT_TRUE(shown<Form26>().isEmpty());
    form = edit(1);
    store_.stores.article.open().execute(u"delete from wenzhang where id=1"_s);
    push(form, u"Command3"_s);
    dialogs_.answer = false;
    form->close();
    EXPECT_TRUE(form->isVisible()) << "its text is not in the store: closing asks";
}

TEST_F(ArticleWindowsTest, AnArticleWithAnApostropheInItsAuthorOpens) {
    store_.addArticle(u"'2016-04-02','O''N','主题','白酒','四','四'"_s);
    auto& application = *static_cast<Application*>(QCoreApplication::instance());
    application.setDialogs(&dialogs_);
    const auto end = qScopeGuard([&] { application.setDialogs(nullptr); });
    Form26* form = edit(4);
    ASSERT_TRUE(form);
    EXPECT_EQ(body(form), u"四"_s);
    EXPECT_EQ(text(form, u"Combo6"_s) + text(form, u"Combo7"_s) + text(form, u"Combo9"_s),
              u"3  三1  一"_s);
    QApplication::processEvents();
    ASSERT_EQ(dialogs_.shown.size(), 1);
    EXPECT_TRUE(dialogs_.shown.first().startsWith(u"观潮台|读取同作者文章没有完成。"_s));
}

TEST_F(ArticleWindowsTest, ATextIsStoredAsItWas) {
    const QString paragraph = u"字"_s.repeated(2 * longestPiece);
    store_.addArticle(u"'2016-04-02','张三','主题','白酒','四','一\r二\r\n\n'"_s);
    store_.addArticle(u"'2016-04-02','张三','主题','白酒','五','"_s + paragraph + u"\r\n'"_s);
    const auto stored = [&] {
        return store_.rows(store_.stores.article, u"select leirong from wenzhang where id>3"_s);
    };
    const QStringList before = stored();
    ArticleText* writing = nullptr;
    for (const int id : {4, 5}) {
        openWindows_.closeAll();
        Form26* form = edit(id);
        push(form, u"Command3"_s);
        writing = form->findChild<ArticleText*>();
        writing->insertPlainText(u"x"_s);
        writing->undo();
        push(form, u"Command3"_s);
    }
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(writing->document()->blockCount(), 3) << "a huge paragraph is shown in pieces";
    writing->selectAll();
    writing->copy();
    EXPECT_EQ(QApplication::clipboard()->text(), paragraph + u'\n');
    writing->moveCursor(QTextCursor::Start);
    QTest::keyClick(writing, Qt::Key_Return);
    EXPECT_EQ(writing->text(), u"\r\n"_s + paragraph + u"\r\n"_s);
}

TEST_F(ArticleWindowsTest, AWordIsFoundRoundTheEndOfTheText) {
    Form26* form = edit(1);
    auto* writing = form->findChild<ArticleText*>();
    QTest::keyClick(form, Qt::Key_F, Qt::ControlModifier);
    auto* word = form->findChild<QLineEdit*>(u"findWord"_s);
    ASSERT_TRUE(word->isVisible());
    QTest::keyClicks(word, u"abc"_s);
    QList<int> places{writing->textCursor().selectionStart()};
    for (const auto modifier : {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier}) {
        QTest::keyClick(word, Qt::Key_Return, modifier);
        places << writing->textCursor().selectionStart();
    }
    EXPECT_EQ(places, QList<int>({0, 6, 0, 6}));
    for (QWidget* focus : std::initializer_list<QWidget*>{word, writing}) {
        form->findChild<FindBar*>()->open();
        QTest::keyClick(focus, Qt::Key_Escape);
        EXPECT_TRUE(form->isVisible() && !word->isVisible()) << "Esc closes the bar alone";
    }
    QTest::keyClick(writing, Qt::Key_F3);
    EXPECT_EQ(writing->textCursor().selectionStart(), 0);
    EXPECT_TRUE(word->isVisible()) << "what was found is told";
}

}  // namespace guanchao
