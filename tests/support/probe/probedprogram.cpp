#include "support/probe/probedprogram.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

ProbedProgram::ProbedProgram(const QProcessEnvironment& p_environment, const QString& p_program)
    : m_environment(p_environment), m_program(p_program)
{
}

bool ProbedProgram::run(const QStringList& p_arguments)
{
    const QString path = m_folder.filePath(QStringLiteral("widgets.json"));
    QFile::remove(path);
    m_environment.insert(QStringLiteral("QT_PLUGIN_PATH"),
                         qEnvironmentVariable("TILER_PROBE_PLUGINS"));
    m_environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"),
                         QStringLiteral("widgetprobe:") + path);
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(m_program, p_arguments);
    const bool finished = process.waitForFinished(60000);
    if (!finished) {
        process.kill();
        process.waitForFinished();
    }
    m_story = QStringLiteral("exit code %1, %2, status %3: ")
                  .arg(process.exitCode())
                  .arg(finished ? QStringLiteral("ended") : QStringLiteral("did not end"))
                  .arg(process.exitStatus()) +
              QString::fromUtf8(process.readAll());
    QFile file(path);
    m_found = file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                             : QJsonObject();
    return finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0 &&
           !m_found.isEmpty();
}

QStringList ProbedProgram::libraries() const
{
    QStringList names;
    const QJsonArray all = m_found[QStringLiteral("libraries")].toArray();
    for (const auto& name : all) {
        names.append(name.toString());
    }
    return names;
}

QList<QJsonObject> ProbedProgram::widgets(const QString& p_class) const
{
    QList<QJsonObject> found;
    const QJsonArray all = m_found[QStringLiteral("widgets")].toArray();
    for (const auto& value : all) {
        const QJsonObject widget = value.toObject();
        if (p_class.isEmpty() || widget[QStringLiteral("class")].toString() == p_class) {
            found.append(widget);
        }
    }
    return found;
}

QList<QJsonObject> ProbedProgram::visibleWindows() const
{
    QList<QJsonObject> found;
    for (const QJsonObject& widget : widgets()) {
        if (widget[QStringLiteral("window")].toBool() &&
            widget[QStringLiteral("visible")].toBool()) {
            found.append(widget);
        }
    }
    return found;
}
