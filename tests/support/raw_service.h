// A service that accepts and then does what the test says, over a real loopback connection.
#pragma once

#include <QString>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <functional>

#include "platform/service.h"

namespace guanchao {

class RawService {
public:
    RawService() {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
            QTcpSocket* socket = server_.nextPendingConnection();
            ++connections;
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                requests += QString::fromUtf8(socket->readAll());
                answer(*socket);
            });
            QObject::connect(socket, &QTcpSocket::disconnected, &server_, [this] { ++hangUps; });
        });
    }
    Service service(int timeoutSeconds = 0) const {
        return {QStringLiteral("http://127.0.0.1:") + QString::number(server_.serverPort()),
                {},
                timeoutSeconds};
    }

    QString requests;
    int connections = 0;
    int hangUps = 0;
    std::function<void(QTcpSocket&)> answer = [](QTcpSocket&) {};

private:
    QTcpServer server_;
};

inline QByteArray httpHead(qsizetype length) {
    return "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " + QByteArray::number(length) +
           "\r\n\r\n";
}

// What a service may do to a request.
struct ServiceManner {
    const char* what;
    std::function<void(QTcpSocket&)> answer;
};

// The request ends by itself.
inline const ServiceManner hangingUp = {"resets", [](QTcpSocket& socket) { socket.abort(); }};

// The request ends only when it is broken off, or by its time-out.
inline const ServiceManner neverDone[] = {
    {"silent", [](QTcpSocket&) {}},
    {"dripping",
     [](QTcpSocket& socket) {
         socket.write(httpHead(100000));
         auto* drips = new QTimer(&socket);
         drips->callOnTimeout(&socket, [&socket] { socket.write("."); });
         drips->start(20);
     }},
};

}  // namespace guanchao
