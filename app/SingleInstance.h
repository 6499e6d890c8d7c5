#pragma once

#include <sys/types.h>
#include <unistd.h>
#include <QObject>
#include <QSocketNotifier>
#include <map>
#include <memory>

namespace vantrel {

/// Keeps Vantrel to one running copy per user. The first copy listens on a local socket; a copy
/// started later tells it to come to the front and ends, so the calculator, its log and its input
/// stay in one window.
///
/// The socket lives in the user's runtime folder, which only that user can enter, and a later copy
/// hands over only to a copy that runs as the same user: another account can neither take the
/// name first nor be mistaken for the running calculator. Plain POSIX sockets watched by the
/// event loop: Qt's network module would cost every start its libraries and 1.7 MB.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// The socket of this user's calculator: "com.glessik.Vantrel-UID" in $XDG_RUNTIME_DIR (or
    /// the private folder Qt makes when it is unset); empty when there is no such folder that
    /// belongs to the user, and Vantrel then runs without handing over.
    static QString socketPathForThisUser();

    /// A copy that hands over only to a running copy whose process belongs to `owner`.
    explicit SingleInstance(const QString& socketPath, uid_t owner = getuid(),
                            QObject* parent = nullptr);
    ~SingleInstance() override;

    /// Asks a running copy of the owner to come to the front; true when one answered.
    bool activateRunningInstance();
    /// Starts answering later copies; false when the socket could not be opened.
    bool listen();

signals:
    void activationRequested();

private:
    void acceptConnections();
    void readRequest(int client);

    QString m_path;
    uid_t m_owner;
    int m_listening = -1;
    std::unique_ptr<QSocketNotifier> m_listener;
    std::map<int, std::unique_ptr<QSocketNotifier>> m_clients;
};

}  // namespace vantrel
