#include "SingleInstance.h"

#include <QLocalSocket>

namespace vantrel {

namespace {
constexpr int kTimeoutMs = 1000;
const QByteArray kActivate = "activate\n";
}  // namespace

SingleInstance::SingleInstance(const QString& name, QObject* parent)
    : QObject(parent), m_name(name) {
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (socket->readAll().contains(kActivate)) emit activationRequested();
                socket->disconnectFromServer();
            });
        }
    });
}

bool SingleInstance::activateRunningInstance() {
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(kTimeoutMs)) return false;
    socket.write(kActivate);
    socket.waitForBytesWritten(kTimeoutMs);
    socket.waitForDisconnected(kTimeoutMs);
    return true;
}

bool SingleInstance::listen() {
    // A copy that crashed leaves its socket file behind; nobody answers on it any more.
    QLocalServer::removeServer(m_name);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    return m_server.listen(m_name);
}

}  // namespace vantrel
