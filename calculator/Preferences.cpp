#include "Preferences.h"

namespace vantrel {

Preferences::Preferences() : m_settings(QStringLiteral("Glessik"), QStringLiteral("Vantrel")) {}

Preferences::~Preferences() {
    if (m_holding) writeHeld();
}

QVariant Preferences::stored(const QString& key) const {
    const auto held = m_held.constFind(key);
    return held != m_held.constEnd() ? *held : m_settings.value(key);
}

bool Preferences::contains(const QString& key) const {
    return m_held.contains(key) || m_settings.contains(key);
}

int Preferences::integer(const QString& key) const {
    bool isInteger = false;
    const int value = stored(key).toInt(&isInteger);
    return isInteger ? value : 0;
}

std::optional<QString> Preferences::string(const QString& key) const {
    const QVariant value = stored(key);
    if (!value.isValid() || !value.canConvert<QString>()) return std::nullopt;
    return value.toString();
}

QStringList Preferences::stringList(const QString& key) const {
    return stored(key).toStringList();
}

QByteArray Preferences::bytes(const QString& key) const {
    return stored(key).toByteArray();
}

void Preferences::setValue(const QString& key, const QVariant& value) {
    if (m_holding) {
        m_held.insert(key, value);
        return;
    }
    m_settings.setValue(key, value);
    m_settings.sync();
}

void Preferences::writeHeld() {
    m_holding = false;
    for (auto held = m_held.constBegin(); held != m_held.constEnd(); ++held) {
        m_settings.setValue(held.key(), held.value());
    }
    m_held.clear();
    m_settings.sync();
}

}  // namespace vantrel
