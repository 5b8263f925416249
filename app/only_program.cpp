#include "app/only_program.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QLocalSocket>

namespace guanchao {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int answerWithin = 3000;  // milliseconds

QString serverNameOf(const QString& folder) {
    const QByteArray place = QFileInfo(folder).canonicalFilePath().toUtf8();
    const QByteArray digest = QCryptographicHash::hash(place, QCryptographicHash::Sha1).toHex();
    return u"guanchaotai-"_s + QString::fromLatin1(digest);
}

}  // namespace

OnlyProgram::OnlyProgram(const QString& folder)
    : serverName_(serverNameOf(folder)), lock_(folder + lockOfProgram) {
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    QObject::connect(&server_, &QLocalServer::newConnection, &server_, [this] { answer(); });
}

bool OnlyProgram::isFirst() {
    if (lock_.take() == ProcessLock::Outcome::held) {
        return false;
    }
    // What a killed one has left; it holds the lock no more.
    QLocalServer::removeServer(serverName_);
    server_.listen(serverName_);
    return true;
}

bool OnlyProgram::raiseFirst() const {
    QLocalSocket socket;
    socket.connectToServer(serverName_);
    return socket.waitForConnected(answerWithin) && socket.waitForReadyRead(answerWithin);
}

void OnlyProgram::answer() {
    QLocalSocket* socket = server_.nextPendingConnection();
    QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
    raised();
    socket->write("1");
    socket->flush();
}

}  // namespace guanchao
