#pragma once

#include <QLocalServer>
#include <QObject>

namespace vantrel {

/// Keeps Vantrel to one running copy per user. The first copy listens on a local socket; a copy
/// started later tells it to come to the front and ends, so the calculator, its log and its input
/// stay in one window.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(const QString& name, QObject* parent = nullptr);

    /// Asks a running copy to come to the front; true when one answered.
    bool activateRunningInstance();
    /// Starts answering later copies; false when the socket could not be opened.
    bool listen();

signals:
    void activationRequested();

private:
    QString m_name;
    QLocalServer m_server;
};

}  // namespace vantrel
