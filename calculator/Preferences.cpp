#include "Preferences.h"

namespace vantrel {

Preferences::Preferences() : m_settings(QStringLiteral("Glessik"), QStringLiteral("Vantrel")) {}

bool Preferences::contains(const QString& key) const {
    return m_settings.contains(key);
}

int Preferences::integer(const QString& key) const {
    bool isInteger = false;
    const int value = m_settings.value(key).toInt(&isInteger);
    return isInteger ? value : 0;
}

std::optional<QString> Preferences::string(const QString& key) const {
    const QVariant value = m_settings.value(key);
    if (!value.isValid() || !value.canConvert<QString>()) return std::nullopt;
    return value.toString();
}

QStringList Preferences::stringList(const QString& key) const {
    return m_settings.value(key).toStringList();
}

QByteArray Preferences::bytes(const QString& key) const {
    return m_settings.value(key).toByteArray();
}

void Preferences::setValue(const QString& key, const QVariant& value) {
    m_settings.setValue(key, value);
    if (!m_holding) m_settings.sync();
}

void Preferences::writeHeld() {
    m_holding = false;
    m_settings.sync();
}

}  // namespace vantrel
