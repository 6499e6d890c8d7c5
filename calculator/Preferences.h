#pragma once

#include <QHash>
#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>

namespace vantrel {

/// The user's preferences store (organisation "Glessik", application "Vantrel"). Every write goes
/// to disk at once, so a logout or a crash right after a change loses nothing; only the writes of
/// the start-up, before the window is first drawn (the choices restored, the window's place), are
/// held back and written once.
class Preferences {
public:
    Preferences();
    /// Writes what is still held back: nothing set is lost.
    ~Preferences();

    bool contains(const QString& key) const;
    /// The integer under the key; a missing key or a value that is no integer reads as 0.
    int integer(const QString& key) const;
    std::optional<QString> string(const QString& key) const;
    QStringList stringList(const QString& key) const;
    QByteArray bytes(const QString& key) const;

    void setValue(const QString& key, const QVariant& value);
    /// Keeps the writes that follow in memory until writeHeld(); they read back meanwhile.
    void holdWrites() { m_holding = true; }
    /// Writes to disk what was held back, and every write from now on at once.
    void writeHeld();

private:
    QVariant stored(const QString& key) const;

    mutable QSettings m_settings;
    bool m_holding = false;
    // Kept apart from the store while held: the store would otherwise write them itself the next
    // time the event loop runs.
    QHash<QString, QVariant> m_held;
};

}  // namespace vantrel
