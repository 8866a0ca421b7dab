#pragma once

#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

/** One setting: a text or a list of texts. */
struct configValue {
    enum Kind : int { String = 1, StringList = 2 };

    int kind = String;
    QString text;     /**< of kind String */
    QStringList list; /**< of kind StringList */
};

/**
 * The user's settings, mirrored in one JSON file. The one object lives for the whole run; the
 * program reaches it through the functions below alone. Main thread only.
 */
class Config : public QObject
{
    Q_OBJECT

public:
    Config() = default;

    /** Takes over what the file holds; a key that it doesn't hold stays as it is. */
    void load(const QString& p_path);
    /** Writes all settings, in place. A file that can't be opened stays as it is. */
    void save(const QString& p_path) const;

    /** A setting, or a default one for an absent key. */
    configValue value(const QString& p_key) const { return m_values.value(p_key); }
    /** Replaces a setting, of whatever kind it was. */
    void setValue(const QString& p_key, const configValue& p_value);

private:
    Q_DISABLE_COPY(Config)

    QMap<QString, configValue> m_values;
};

/**
 * Makes the folder of the settings file, "/configs" below the application's configuration
 * location, and reads the file, "config.json". Until then all settings read as empty. A missing or
 * broken file reads as empty too.
 */
void configSetUp();
/** The text under a key; empty for an absent key and for a list. */
QString getString(const QString& p_key);
/** The list under a key; empty for an absent key and for a text. */
QStringList getStringList(const QString& p_key);
/** Puts a text under a key, in memory. Lost at exit without save(). */
void setString(const QString& p_key, const QString& p_value);
/** Puts a list under a key, in memory. Lost at exit without save(). */
void setStringList(const QString& p_key, const QStringList& p_value);
/** Writes all settings to the file. A failure is not reported. */
void save();
