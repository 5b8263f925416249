#include <QDirIterator>
#include <QTemporaryDir>

#include "app/startup.h"
#include "store/prepared_stores.h"
#include "store/recordset.h"
#include "tests/support/fakes.h"
#include "tests/support/files.h"
#include "tests/support/qt_printers.h"
#include "themes/theme_table.h"

namespace guanchao {

namespace {

const QString place = QStringLiteral(GUANCHAO_SOURCE_DIR "/tests/kept_folder/");

// Puts a copy of the kept folder's files into `folder`, in the place of those that are there.
void copyKeptFolder(const QString& version, const QString& folder) {
    const QString source = place + version + u"/application/"_s;
    QDirIterator files(source, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        writeFile(folder + u'/' + path.mid(source.size()), contentOf(path));
    }
}

// A value in one line: texts in quotes, numbers as they read in every version of the library.
QString cell(const QString& column) {
    return u"case typeof(%1) when 'text' then "
           u"replace(replace(quote(%1),char(13),'\\r'),char(10),'\\n') "
           u"when 'real' then printf('%.15g',%1) else quote(%1) end"_s.arg(column);
}

// The heading of the table, and its rows in the order in which they were added.
QString tableText(Connection& store, const QString& table, const QStringList& columns) {
    QStringList cells;
    for (const QString& column : columns) {
        cells << cell(column);
    }
    QString text = table + u'(' + columns.join(u',') + u")\n"_s;
    Recordset rows(store, u"select "_s + cells.join(u"||char(9)||"_s) + u" from "_s + table +
                              u" order by rowid"_s);
    for (; !rows.atEnd(); rows.moveNext()) {
        text += rows.value(0).toText() + u'\n';
    }
    return text;
}

QString storeText(Connection& store) {
    QStringList tables;
    for (Recordset names(store, u"select name from sqlite_master where type='table'"_s);
         !names.atEnd(); names.moveNext()) {
        const QString table = names.value(0).toText();
        const Recordset any(store, u"select * from "_s + table + u" limit 0"_s);
        QStringList columns;
        for (int field = 0; field < any.fieldCount(); ++field) {
            columns << any.fieldName(field);
        }
        tables << tableText(store, table, columns);
    }
    return tables.join(u'\n');
}

}  // namespace

// A program of today, and a user's folder from then.
class KeptFolderTest : public ::testing::Test {
protected:
    // What the program does with a folder at its start.
    void start(const QString& version) {
        const QString folder = applicationFolder(directory_.filePath(version));
        copyKeptFolder(version, folder);
        loadProgram(folder, tray_, globals_, stores_, clock_, [&] {
            ThemeTable(stores_, globals_, clock_, dialogs_, themes_, stocks_)
                .refresh(u"0"_s, [](const UpdateLabels&) {});
        });
        EXPECT_TRUE(prepareStores(folder, QString(), clock_.now()).isEmpty());
    }

    // With what was written down of it when the folder was kept: of each table a line with its name
    // and columns, then a line a row; an empty line ends the table.
    static void expectRows(const QString& version, const StoreFile& file) {
        Connection store = file.open();
        const QString name = QFileInfo(file.path).fileName();
        const QString kept =
            QString::fromUtf8(contentOf(place + version + u"/rows/"_s + name + u".txt"_s));
        ASSERT_FALSE(kept.isEmpty())
            << "no rows are written down of " << file.path.toStdString() << ":\n"
            << storeText(store).toStdString();
        for (const QString& table : kept.split(u"\n\n"_s)) {
            const QString heading = table.section(u')', 0, 0);
            EXPECT_EQ(
                tableText(store, heading.section(u'(', 0, 0), heading.section(u'(', 1).split(u','))
                    .trimmed(),
                table.trimmed());
        }
    }

    // Texts and settings: byte for byte.
    void expectFiles(const QString& version) {
        const QString kept = directory_.filePath(version + u"/kept/"_s);
        copyKeptFolder(version, kept);
        QDirIterator files(kept, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString path = files.next();
            if (!path.endsWith(u".mzdat"_s)) {
                EXPECT_EQ(contentOf(globals_.yingyongmulu + path.mid(kept.size())), contentOf(path))
                    << path.toStdString();
            }
        }
    }

    QTemporaryDir directory_;
    Globals globals_;
    Stores stores_;
    FakeClock clock_;
    FakeDialogs dialogs_;
    FakeTray desktopTray_;
    TrayModule tray_{desktopTray_, globals_};
    ResultGrid themes_, stocks_;
};

TEST_F(KeptFolderTest, AStartLosesNothingOfIt) {
    const QStringList versions = QDir(place).entryList({u"v*"_s}, QDir::Dirs);
    ASSERT_FALSE(versions.isEmpty());
    for (const QString& version : versions) {
        SCOPED_TRACE(version.toStdString());
        start(version);
        EXPECT_GT(themes_.rows(), 5);
        EXPECT_TRUE(dialogs_.shown.isEmpty());
        for (const StoreFile& store : {stores_.main, stores_.heat, stores_.article, stores_.pinyin,
                                       stores_.backupTemplate}) {
            expectRows(version, store);
        }
        expectFiles(version);
    }
}

}  // namespace guanchao
