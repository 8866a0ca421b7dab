#include "base/config.h"

#include "base/commonhelper.h"

#include <QDir>
#include <QStandardPaths>

namespace
{
Config s_config;

QString configFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) +
           QStringLiteral("/configs");
}

QString configPath() { return configFolder() + QStringLiteral("/config.json"); }
} // namespace

void Config::load(const QString& p_path)
{
    const QJsonObject stored = readJson(p_path);
    const QStringList keys = stored.keys();
    for (const QString& key : keys) {
        const QJsonValue member = stored.value(key);
        configValue value;
        if (member.isArray()) {
            value.kind = configValue::StringList;
            value.list = toStringList(member.toArray());
        } else {
            value.text = member.toString();
        }
        m_values.insert(key, value);
    }
}

void Config::save(const QString& p_path) const
{
    QJsonObject stored;
    for (auto it = m_values.constBegin(); it != m_values.constEnd(); ++it) {
        if (it->kind == configValue::String) {
            stored.insert(it.key(), it->text);
        } else {
            stored.insert(it.key(), QJsonArray::fromStringList(it->list));
        }
    }
    writeJson(stored, p_path);
}

void Config::setValue(const QString& p_key, const configValue& p_value)
{
    m_values.insert(p_key, p_value);
}

void configSetUp()
{
    const QDir folder(configFolder());
    if (!folder.exists()) {
        folder.mkpath(folder.path());
    }
    s_config.load(configPath());
}

QString getString(const QString& p_key) { return s_config.value(p_key).text; }

QStringList getStringList(const QString& p_key) { return s_config.value(p_key).list; }

void setString(const QString& p_key, const QString& p_value)
{
    s_config.setValue(p_key, {configValue::String, p_value, QStringList()});
}

void setStringList(const QString& p_key, const QStringList& p_value)
{
    s_config.setValue(p_key, {configValue::StringList, QString(), p_value});
}

void save() { s_config.save(configPath()); }
