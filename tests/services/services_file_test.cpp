#include "services/services_file.h"

#include <QTemporaryDir>

#include "base/activity.h"
#include "services/standard_file.h"
#include "tests/support/files.h"
#include "tests/support/former_services.h"

namespace guanchao {

class ServicesFileTest : public ::testing::Test {
protected:
    void begin(const QByteArray& text) {
        QFile::remove(path_ + u".以前"_s);
        writeFile(path_, text);
        services_ = readServices(path_);
        file_.emplace(path_, services_);
    }
    static QString words(const ServiceEntry& it) {
        return it.purpose + u' ' + it.service.kind + u' ' + it.service.host;
    }
    QStringList asked() const {
        QList<ServiceEntry> entries = file_->entries();
        entries.removeIf([](const ServiceEntry& it) { return !it.isUsed; });
        return textsOf(entries, words);
    }

    QTemporaryDir folder_;
    QString path_ = folder_.filePath(u"services.ini"_s);
    Services services_;
    std::optional<ServicesFile> file_;
};

TEST_F(ServicesFileTest, AChangeLeavesAllElse) {
    const QByteArray text =
        "; mine\n[practice]\n[quote]\nkind=sina\nhost=http://s\ncolour=red\n"
        "; behind\n[Quote.3]\nkind=tencent\nhost=http://t\n[history]\n"
        "[factors]\nhost=http://f\n[fundamentals]\n[boards]\n[stocklist]\n[search]\n";
    begin(text);
    EXPECT_TRUE(file_->move(u"quote"_s, false));
    EXPECT_EQ(services_.quote.first().host, u"http://t"_s) << "asked from now on";
    EXPECT_TRUE(services_.isPractice);
    EXPECT_FALSE(file_->move(u"quote"_s, true));
    EXPECT_FALSE(file_->move(u"quote.3"_s, false)) << "the next one is of another purpose";
    file_->setUsed(u"quote.3"_s, false);
    EXPECT_EQ(services_.quote.size(), 1);
    file_->setHost(u"history"_s, u" http://127.0.0.1:8/ "_s);
    EXPECT_EQ(services_.history.first().kind, u"sina"_s) << "a host alone would be csv";
    EXPECT_EQ(
        contentOf(path_),
        QByteArray("; mine\n[practice]\n[Quote.3]\nuse=0\nkind=sina\nhost=http://s\n"
                   "colour=red\n; behind\n[quote]\nkind=tencent\nhost=http://t\n[history]\n"
                   "kind=sina\nhost=http://127.0.0.1:8\n[factors]\nhost=http://f\n[fundamentals]\n"
                   "[boards]\n[stocklist]\n[search]\n"));
    EXPECT_EQ(contentOf(path_ + u".以前"_s), text) << "as it was before the first change";
    EXPECT_THROW(file_->setUsed(u"quote.3"_s, true), OperationError) << "real, in practice";
    EXPECT_EQ(services_.quote.size(), 1);
}

// What holds because the file doesn't name its purpose goes on to hold beside what is written.
TEST_F(ServicesFileTest, ASectionMoreChangesNothingElse) {
    for (const QByteArray& text : {QByteArray(), formerServices,
                                   QByteArray("[newspage]\nhost=http://n\n[chart]\nhost=\n")}) {
        begin(text);
        for (const char* section : {"history", "newspage", "chart", "boards.2"}) {
            QStringList before = asked();
            const QList<ServiceEntry> entries = file_->entries();
            const auto entry =
                std::ranges::find(entries, QLatin1String(section), &ServiceEntry::section);
            if (entry != entries.end()) {
                file_->setUsed(entry->section, false);
                before.removeOne(words(*entry));
                EXPECT_EQ(asked(), before) << text.toStdString() << section;
            }
        }
        EXPECT_EQ(services_.quote.size(), text == formerServices ? 1 : 2);
    }
}

TEST_F(ServicesFileTest, WhatCannotBeDoneChangesNothing) {
    const QByteArray text = "[quote]\nhost=http://s\n";
    begin(text);
    for (const char* host :
         {"", "hq.sinajs.cn", "ftp://a", "https://", "https://a/b", "http://a b", "http://a?x=1"}) {
        EXPECT_THROW(file_->setHost(u"quote"_s, QString::fromLatin1(host)), OperationError) << host;
    }
    EXPECT_THROW(file_->setUsed(u"quote.9"_s, false), OperationError) << "gone meanwhile";
    QDir(folder_.path()).mkdir(u"services.ini.以前"_s);
    EXPECT_THROW(file_->setUsed(u"quote"_s, false), OperationError) << "where the former one goes";
    QDir(folder_.path()).rmdir(u"services.ini.以前"_s);
    EXPECT_EQ(contentOf(path_), text);
    EXPECT_EQ(services_.quote.size(), 1);
    QFile::remove(path_);
    QDir(folder_.path()).mkdir(u"services.ini"_s);
    EXPECT_THROW(file_->takeStandard(), OperationError) << "is there and can't be read";
}

}  // namespace guanchao
