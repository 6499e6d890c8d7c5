#include "SingleInstance.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>

namespace vantrel {

namespace {

constexpr int kTimeoutMs = 1000;
const QByteArray kActivate = "activate\n";

// The user of the process at the other end of a connected local socket.
bool peerIsOwnedBy(const QLocalSocket& socket, uid_t owner) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    const auto descriptor = static_cast<int>(socket.socketDescriptor());
    return getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == owner;
}

}  // namespace

QString SingleInstance::socketPathForThisUser() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty() || QFileInfo(folder).ownerId() != getuid()) return {};
    return QDir(folder).filePath(QStringLiteral("com.glessik.Vantrel-%1").arg(getuid()));
}

SingleInstance::SingleInstance(const QString& socketPath, uid_t owner, QObject* parent)
    : QObject(parent), m_path(socketPath), m_owner(owner) {
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, this, [this, socket] {
                if (socket->readAll().contains(kActivate) && peerIsOwnedBy(*socket, m_owner)) {
                    emit activationRequested();
                }
                socket->disconnectFromServer();
            });
        }
    });
}

bool SingleInstance::activateRunningInstance() {
    if (m_path.isEmpty()) return false;
    QLocalSocket socket;
    socket.connectToServer(m_path);
    if (!socket.waitForConnected(kTimeoutMs)) return false;
    if (!peerIsOwnedBy(socket, m_owner)) return false;
    socket.write(kActivate);
    socket.waitForBytesWritten(kTimeoutMs);
    socket.waitForDisconnected(kTimeoutMs);
    return true;
}

bool SingleInstance::listen() {
    if (m_path.isEmpty()) return false;
    // A copy that crashed leaves its socket file behind; nobody answers on it any more.
    QLocalServer::removeServer(m_path);
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    return m_server.listen(m_path);
}

}  // namespace vantrel
