#pragma once

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>

namespace vantrel {

/// The user's preferences store (organisation "Glessik", application "Vantrel"). Every write goes
/// to disk at once, so a logout or a crash right after a change loses nothing.
class Preferences {
public:
    Preferences();

    bool contains(const QString& key) const;
    /// The integer under the key; a missing key or a value that is no integer reads as 0.
    int integer(const QString& key) const;
    std::optional<QString> string(const QString& key) const;
    QStringList stringList(const QString& key) const;
    QByteArray bytes(const QString& key) const;

    void setValue(const QString& key, const QVariant& value);

private:
    mutable QSettings m_settings;
};

}  // namespace vantrel
