#include <QClipboard>
#include <QScopeGuard>
#include <utility>

#include "app/form2.h"
#include "articles/article_text.h"
#include "articles/body_text.h"
#include "articles/form26.h"
#include "articles/form27.h"
#include "frame/entry_box.h"
#include "platform/desktop/desktop_dialogs.h"
#include "tests/support/window_test.h"
#include "themes/form30.h"

namespace guanchao {

class ArticleWindowsTest : public WindowTest {
protected:
    ArticleWindowsTest() {
        globals_.yingyongmulu = store_.folder();
        store_.addArticle(u"'2016-03-31','张三','主题','白酒','一','ABC x abc'"_s);
        store_.addArticle(u"'2016-05-31','李四','个股','SH600519贵州茅台','二','二'"_s);
        store_.addArticle(u"'2016-04-02','张三','主题','机器人','三','三'"_s);
    }
    ~ArticleWindowsTest() override { dialogs_.unsaved = Unsaved::discard; }

    static QList<Form26*> editors() {
        QApplication::processEvents();
        return shownWindows<Form26>();
    }
    void openEditor(int id) {
        load(id);
        QApplication::processEvents();
    }
    // The only editor. Lets no event happen: its timers are real.
    void load(int id) {
        globals_.dangqianwenzhang = id;
        windows_.openAnother<Form26>();
        form_ = shownWindow<Form26>();
    }

    EntryBox* box(const QString& name) const { return find<EntryBox>(name); }
    void pick(const QString& name, int line) const {
        box(name)->setCurrentIndex(line);
        emit box(name)->activated(line);
    }
    void tick(const QString& name) const {
        auto* timer = find<QTimer>(name);
        timeIsUp(timer);
        EXPECT_FALSE(timer->isActive()) << name.toStdString();
    }
    ArticleText* writing() const { return form_->findChild<ArticleText*>(); }
};

TEST_F(ArticleWindowsTest, TheEntriesHandTheirContextOver) {
    Form2 main(environment_, windows_, desktop_);
    globals_.dangqianzhuti = u"白酒"_s;
    globals_.dangqiandm = u"SH600519"_s;
    globals_.dangqianjc = u"贵州茅台"_s;
    Form30 watchlist(environment_, windows_);
    const std::tuple<QWidget*, QString, QString, int> cases[] = {
        {&main, u"编辑主题文章"_s, u"主题|白酒"_s, 1},
        {&main, u"操作个股文章"_s, u"个股|SH600519贵州茅台"_s, 1},
        {&watchlist, u"操作个股文章"_s, u"个股|SH600519贵州茅台"_s, 1},
        {&main, u"文章管理器"_s, u"|"_s, 3},
    };
    for (const auto& [window, entry, context, rows] : cases) {
        window->findChild<QAction*>(entry)->trigger();
        form_ = shownWindow<Form27>();
        EXPECT_EQ(box(u"Combo7"_s)->currentText() + u'|' + box(u"Combo8"_s)->currentText(),
                  context);
        EXPECT_EQ(grid().rows(), rows + 1) << entry.toStdString();
    }
}

TEST_F(ArticleWindowsTest, TheBrowserQueriesByItsBoxes) {
    open<Form27>();
    form_->findChild<QCheckBox*>()->setChecked(false);
    EXPECT_EQ(grid().rows(), 4);
    pick(u"Combo7"_s, box(u"Combo7"_s)->findText(u"主题"_s));
    EXPECT_EQ(box(u"Combo8"_s)->count(), 2);
    click(u"Command1"_s);
    EXPECT_EQ(grid().rows(), 3);
    trigger(u"kkshuaxin"_s);
    EXPECT_EQ(grid().rows(), 4);
    EXPECT_EQ(box(u"Combo7"_s)->currentText(), u"主题"_s) << "the boxes keep their text";
}

TEST_F(ArticleWindowsTest, TheListShowsWhatAnEditorDoesAndHowMuchIsCut) {
    QWidget* browser = open<Form27>();
    clickHeader(view(), 2);
    const auto shown = [&]() -> QString {
        return columnTexts(gridOf(*child<GridView>(browser, u"MSHFlexGrid1"_s)), 6).join(u' ') +
               u'|' + child<QLabel>(browser, u"found"_s)->text();
    };
    EXPECT_EQ(shown(), u"标题 一 三 二|共找到 3 篇"_s);
    QApplication::processEvents();
    clickCell(view(), 1, 6);
    openEditor(1);
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_));
    edit(u"Text7"_s)->setText(u"丁"_s);
    QTest::keyClick(form_.data(), Qt::Key_S, Qt::ControlModifier);
    until([&] { return shown() == u"标题 丁 三 二|共找到 3 篇"_s; });
    EXPECT_EQ(gridOf(*child<GridView>(browser, u"MSHFlexGrid1"_s)).markedRow(), 1)
        << "the article stays the chosen one";
    click(u"Command2"_s);
    EXPECT_EQ(shown(), u"标题 丁 丁 三 二|共找到 4 篇"_s);
    click(u"Command4"_s);
    EXPECT_EQ(shown(), u"标题 丁 三 二|共找到 3 篇"_s);
}

TEST_F(ArticleWindowsTest, ArticlesOpenSideBySide) {
    open<Form27>();
    clickCell(view(), 2, 1);
    click(u"Command2"_s);
    EXPECT_EQ(editors()[0]->findChild<ArticleText*>()->text(), u"三"_s) << "the article held";
    box(u"Combo7"_s)->setText(u"笔记"_s);
    click(u"Command2"_s);
    click(u"Command3"_s);
    view().setFocus();
    QTest::keyClick(&view(), Qt::Key_Return);
    QStringList labels;
    for (Form26* editor : editors()) {
        form_ = editor;
        labels << label(u"Label7"_s) + box(u"Combo4"_s)->currentText();
    }
    labels.sort();
    EXPECT_EQ(labels, QStringList({u"3主题"_s, u"3主题"_s, u"3主题"_s, u"id笔记"_s}));
}

// Real boxes, answered by real keys alone.
TEST_F(ArticleWindowsTest, ExitAndEnterOverAndOverKeepAnUnsavedArticle) {
    const QString end = u"点“确定”退出，点“取消”进入托盘。"_s;
    const QString lose = u"文章《一》有修改还没有保存，要保存吗?"_s;
    const QString nameless = u"文章《》有修改还没有保存，要保存吗?"_s;
    const QString refused = u" 标题不能为空!"_s;
    DesktopDialogs boxes;
    dialogs_.boxes = &boxes;
    const auto noBoxes = qScopeGuard([this] { dialogs_.boxes = nullptr; });
    Form2 main(environment_, windows_, desktop_);
    const auto exit = [&] { form_->showMinimized(), main.close(); };
    const auto fromTray = [&] { main.findChild<QAction*>(u"tuopanexit"_s)->trigger(); };
    const auto escape = [&] { QTest::keyClick(form_.data(), Qt::Key_Escape); };
    const auto move = [&] { pick(u"Combo7"_s, 0); };
    const auto untitled = [&] { edit(u"Text7"_s)->clear(), form_->close(); };
    const Qt::Key left = Qt::Key_Left;
    const struct {
        const char* name;
        std::function<void()> act;
        QList<Qt::Key> keys;
        QStringList boxes;
        bool kept, ends;
    } cases[] = {
        {"exit", exit, {Qt::Key_Return, Qt::Key_Return}, {end, lose}, true, false},
        {"hidden in the tray", exit, {Qt::Key_Escape, Qt::Key_Return}, {end, lose}, true, false},
        {"exit from the tray", fromTray, {Qt::Key_Return}, {lose}, true, false},
        {"closed by Esc", escape, {Qt::Key_Return}, {lose}, true, false},
        {"another article", move, {Qt::Key_Enter}, {lose}, true, false},
        {"discarded", exit, {Qt::Key_Return, left, Qt::Key_Return}, {end, lose}, false, true},
        {"saved", exit, {Qt::Key_Return, left, left, Qt::Key_Return}, {end, lose}, false, true},
        {"no title", untitled, {left, left, Qt::Key_Return}, {nameless, refused}, true, false},
    };
    for (const auto& it : cases) {
        SCOPED_TRACE(it.name);
        main.show();
        openEditor(1);
        QTest::keyClicks(writing(), u"x"_s);
        QList<Qt::Key> keys = it.keys;
        QStringList texts;
        QTimer user;
        user.callOnTimeout([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box && texts.value(texts.size() - 1) != box->text()) {
                texts << box->text();
                EXPECT_TRUE(box->text() != lose || !form_->isMinimized()) << "which is meant";
            }
            if (box) {
                QTest::keyClick(box->windowHandle(),
                                keys.isEmpty() ? Qt::Key_Escape : keys.takeFirst());
            }
        });
        user.start(1);
        it.act();
        EXPECT_TRUE(QTest::qWaitFor([&] {
            return keys.isEmpty() && !QApplication::activeModalWidget() &&
                   it.ends != processes_.ended.isEmpty();
        }));
        EXPECT_EQ(texts, it.boxes);
        EXPECT_EQ(form_ && form_->isVisible(), it.kept);
        EXPECT_TRUE(!it.kept || writing()->text().contains(u'x'));
        EXPECT_TRUE(!form_ || !find<QTimer>(u"Timer3"_s)->isActive()) << "no move";
        EXPECT_EQ(!std::exchange(processes_.ended, {}).isEmpty(), it.ends);
        if (form_) {
            writing()->undo();
            edit(u"Text7"_s)->setText(u"一"_s);
        }
        closeWindows();
        EXPECT_EQ(texts, it.boxes) << "what was taken back is not asked for";
    }
}

// 退出 in the tray while a box of an editor with unsaved text stands.
TEST_F(ArticleWindowsTest, TheEndOfTheProgramWaitsForTheAnswer) {
    const auto escape = [&] { QTest::keyClick(form_.data(), Qt::Key_Escape); };
    const auto remove = [&] { click(u"Command4"_s); };
    const std::tuple<const char*, std::function<void()>, Unsaved, int> cases[] = {
        {"Esc, discarded", escape, Unsaved::discard, 1},
        {"Esc, kept", escape, Unsaved::stay, 1},
        {"a deletion, which is off then", remove, Unsaved::discard, 2},
        {"a deletion, and kept", remove, Unsaved::stay, 2},
    };
    for (const auto& [name, ask, answer, questions] : cases) {
        SCOPED_TRACE(name);
        Form2 main(environment_, windows_, desktop_);
        main.show();
        load(1);
        QTest::keyClicks(writing(), u"x"_s);
        dialogs_.shown.clear();
        dialogs_.unsaved = answer;
        const auto answered = std::make_shared<Later<bool>>();
        dialogs_.gate = answered;
        ask();
        main.findChild<QAction*>(u"tuopanexit"_s)->trigger();
        EXPECT_TRUE(processes_.ended.isEmpty());
        EXPECT_TRUE(dialogs_.shown.last().contains(u"没有保存"_s));
        answered->deliver(true);
        deleteClosedWindows();
        EXPECT_EQ(dialogs_.shown.size(), questions);
        EXPECT_EQ(!processes_.ended.isEmpty(), answer == Unsaved::discard);
        EXPECT_EQ(form_ && form_->isVisible(), answer == Unsaved::stay);
        processes_.ended.clear();
        dialogs_.gate.reset();
        dialogs_.unsaved = Unsaved::discard;
        closeWindows();
        deleteClosedWindows();
        EXPECT_TRUE(processes_.ended.isEmpty()) << "an end that was refused does not come later";
    }
}

// The windows that a crash leaves behind are never closed.
TEST_F(ArticleWindowsTest, ACrashLeavesDraftsThatTheNextStartOffers) {
    const auto drafts = [&] {
        return QDir(store_.folder() + u"草稿"_s).entryList({u"*.json"_s}, QDir::Files).size();
    };
    const auto type = [&](int id) {
        openEditor(id);
        find<QTimer>(u"drafts"_s)->setInterval(1);
        QTest::keyClicks(writing(), u"x"_s);
    };
    const auto crash = [&](int id) {
        const auto before = drafts();
        type(id);
        until([&] { return drafts() > before; });
        delete form_;
        clock_.moment = clock_.moment.addSecs(60);
    };
    for (const int id : {1, 2, 3, 0}) {
        crash(id);
    }
    runArticle(u"update wenzhang set leirong='别的' where id=2"_s);
    runArticle(u"delete from wenzhang where id=3"_s);
    dialogs_.answer = false;
    Form2 main(environment_, windows_, desktop_);
    told();
    main.Form_Load();
    EXPECT_EQ(told(), QStringList{u"观潮台|上次软件没有正常退出，有 4 篇文章没有保存，留有草稿："
                                  u"\n《一》  2026-11-24 10:00\n《二》  2026-11-24 10:01"
                                  u"\n《三》  2026-11-24 10:02\n《关于()的内容》  2026-11-24 10:03"
                                  u"\n\n点“确定”打开，点“取消”下次启动再问。"_s});
    EXPECT_TRUE(editors().isEmpty());
    dialogs_.answer = true;
    main.Form_Load();
    EXPECT_EQ(told().mid(1),
              QStringList({u"观潮台|文章《二》在这份草稿之后又有过修改。窗口里是草稿，"
                           u"保存会盖掉那些修改。"_s,
                           u"观潮台|此文章已删除!"_s}));
    QMap<QString, Form26*> left;
    for (Form26* editor : editors()) {
        const QString text = editor->findChild<ArticleText*>()->text();
        left.insert(child<QLabel>(editor, u"Label7"_s)->text() + u' ' + text, editor);
    }
    ASSERT_EQ(left.keys(), QStringList({u"1 xABC x abc"_s, u"2 x二"_s, u"id x"_s, u"id x三"_s}));
    form_ = left[u"1 xABC x abc"_s];
    click(u"Command3"_s);
    EXPECT_EQ(drafts(), 3) << "what is saved";
    left[u"2 x二"_s]->close();
    EXPECT_EQ(drafts(), 2) << "what is discarded";
    dialogs_.unsaved = Unsaved::stay;
    left[u"id x"_s]->close();
    EXPECT_EQ(drafts(), 2) << "what stays";
    dialogs_.unsaved = Unsaved::discard;
    closeWindows();
    type(1);
    until([&] { return drafts() == 1; });
    writing()->undo();
    until([&] { return drafts() == 0; });
}

TEST_F(ArticleWindowsTest, AMoveWaitsForItsTimerAndAnArticleDeletedElsewhereClosesItsWindow) {
    openEditor(1);
    pick(u"Combo7"_s, 0);
    EXPECT_EQ(writing()->text(), u"ABC x abc"_s);
    tick(u"Timer3"_s);
    EXPECT_EQ(writing()->text(), u"三"_s);
    EXPECT_EQ(box(u"Combo7"_s)->currentText(), u"3  三"_s) << "a move does not refill the lists";
    runArticle(u"delete from wenzhang where id=3"_s);
    pick(u"Combo7"_s, 0);
    tick(u"Timer3"_s);
    EXPECT_EQ(dialogs_.shown, QStringList{u"观潮台|此文章已删除!"_s});
    tick(u"Timer2"_s);
    EXPECT_TRUE(editors().isEmpty());
    load(3);
    tick(u"Timer2"_s);  // the load finishes first
    EXPECT_TRUE(editors().isEmpty());
    openEditor(1);
    runArticle(u"delete from wenzhang where id=1"_s);
    click(u"Command3"_s);
    dialogs_.unsaved = Unsaved::stay;
    form_->close();
    EXPECT_TRUE(form_->isVisible()) << "its text is not in the store: closing asks";
}

TEST_F(ArticleWindowsTest, ATextIsStoredAsItWas) {
    const QString paragraph = u"字"_s.repeated(2 * longestPiece);
    store_.addArticle(u"'2016-04-02','张三','主题','白酒','四','一\r二\r\n\n'"_s);
    store_.addArticle(u"'2016-04-02','张三','主题','白酒','五','"_s + paragraph + u"\r\n'"_s);
    const auto stored = [&] { return articleRows(u"select leirong from wenzhang where id>3"_s); };
    const QStringList before = stored();
    for (const int id : {4, 5}) {
        closeWindows();
        openEditor(id);
        click(u"Command3"_s);
        writing()->insertPlainText(u"x"_s);
        writing()->undo();
        click(u"Command3"_s);
    }
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(writing()->document()->blockCount(), 3) << "a huge paragraph is shown in pieces";
    writing()->selectAll();
    writing()->copy();
    EXPECT_EQ(QApplication::clipboard()->text(), paragraph + u'\n');
}

TEST_F(ArticleWindowsTest, AWordIsFoundRoundTheEndOfTheTextAndEscClosesTheBarAlone) {
    openEditor(1);
    QTest::keyClick(form_.data(), Qt::Key_F, Qt::ControlModifier);
    QLineEdit* word = edit(u"findWord"_s);
    QTest::keyClicks(word, u"abc"_s);
    QList<int> places{writing()->textCursor().selectionStart()};
    for (const auto modifier : {Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier}) {
        QTest::keyClick(word, Qt::Key_Return, modifier);
        places << writing()->textCursor().selectionStart();
    }
    EXPECT_EQ(places, QList<int>({0, 6, 0, 6}));
    QTest::keyClick(word, Qt::Key_Escape);
    EXPECT_TRUE(form_->isVisible() && !word->isVisible());
}

}  // namespace guanchao
