#include "SingleInstance.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <cerrno>
#include <cstring>
#include <string_view>

namespace vantrel {

namespace {

constexpr std::string_view kActivate = "activate\n";

// The user of the process at the other end of a connected local socket.
bool peerIsOwnedBy(int descriptor, uid_t owner) {
    ucred peer{};
    socklen_t size = sizeof(peer);
    return getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == owner;
}

// The socket address of `path`; false when the path is too long for one.
bool addressOf(const QString& path, sockaddr_un& address) {
    const QByteArray name = QFile::encodeName(path);
    address = {};
    address.sun_family = AF_UNIX;
    if (name.size() >= static_cast<qsizetype>(sizeof(address.sun_path))) return false;
    std::memcpy(address.sun_path, name.constData(), static_cast<size_t>(name.size()));
    return true;
}

sockaddr* asSocketAddress(sockaddr_un& address) {
    return reinterpret_cast<sockaddr*>(&address);
}

}  // namespace

QString SingleInstance::socketPathForThisUser() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty() || QFileInfo(folder).ownerId() != getuid()) return {};
    return QDir(folder).filePath(QStringLiteral("com.glessik.Vantrel-%1").arg(getuid()));
}

SingleInstance::SingleInstance(const QString& socketPath, uid_t owner, QObject* parent)
    : QObject(parent), m_path(socketPath), m_owner(owner) {}

// Each notifier goes before its descriptor is closed.
SingleInstance::~SingleInstance() {
    for (auto& [client, notifier] : m_clients) {
        notifier.reset();
        close(client);
    }
    m_listener.reset();
    if (m_listening >= 0) close(m_listening);
}

bool SingleInstance::activateRunningInstance() {
    sockaddr_un address;
    if (m_path.isEmpty() || !addressOf(m_path, address)) return false;
    // Never waiting: a copy that hangs with its queue full is no copy to hand over to.
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0) return false;
    // What is sent stays for the running copy to read after this copy has ended; a copy that
    // goes away meanwhile must not take this one with it through SIGPIPE.
    const bool handedOver = ::connect(descriptor, asSocketAddress(address), sizeof(address)) == 0 &&
                            peerIsOwnedBy(descriptor, m_owner) &&
                            send(descriptor, kActivate.data(), kActivate.size(), MSG_NOSIGNAL) ==
                                static_cast<ssize_t>(kActivate.size());
    close(descriptor);
    return handedOver;
}

bool SingleInstance::listen() {
    sockaddr_un address;
    if (m_path.isEmpty() || !addressOf(m_path, address)) return false;
    // A copy that crashed leaves its socket file behind; nobody answers on it any more.
    unlink(address.sun_path);
    m_listening = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (m_listening < 0) return false;
    // Only the user may connect, whatever the folder's rights.
    const mode_t previousMask = umask(0077);
    const bool bound = bind(m_listening, asSocketAddress(address), sizeof(address)) == 0;
    umask(previousMask);
    if (!bound || ::listen(m_listening, 8) != 0) {
        close(m_listening);
        m_listening = -1;
        return false;
    }
    m_listener = std::make_unique<QSocketNotifier>(m_listening, QSocketNotifier::Read);
    connect(m_listener.get(), &QSocketNotifier::activated, this,
            &SingleInstance::acceptConnections);
    return true;
}

void SingleInstance::acceptConnections() {
    int client = -1;
    while ((client = accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK)) >= 0) {
        auto notifier = std::make_unique<QSocketNotifier>(client, QSocketNotifier::Read);
        connect(notifier.get(), &QSocketNotifier::activated, this,
                [this, client] { readRequest(client); });
        m_clients[client] = std::move(notifier);
    }
}

// One request per connection: whatever it says, the connection is closed after the first read.
void SingleInstance::readRequest(int client) {
    char request[64];
    const ssize_t size = read(client, request, sizeof(request));
    // Woken without data after all: the request is still to come.
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (size > 0 &&
        std::string_view(request, static_cast<size_t>(size)).find(kActivate) !=
            std::string_view::npos &&
        peerIsOwnedBy(client, m_owner)) {
        emit activationRequested();
    }
    // Deleted later: this runs inside the notifier's own signal.
    auto node = m_clients.extract(client);
    node.mapped()->setEnabled(false);
    node.mapped().release()->deleteLater();
    close(client);
}

}  // namespace vantrel
