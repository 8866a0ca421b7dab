#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QFont>
#include <QGenericPlugin>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMainWindow>
#include <QSet>
#include <QTimer>
#include <QWidget>

#include <algorithm>

namespace
{
QJsonObject fontOf(const QFont& p_font)
{
    return {{QStringLiteral("family"), p_font.family()},
            {QStringLiteral("points"), p_font.pointSize()},
            {QStringLiteral("weight"), p_font.weight()},
            {QStringLiteral("italic"), p_font.italic()}};
}

QJsonObject widgetOf(const QWidget& p_widget)
{
    QJsonArray actions;
    for (const QAction* action : p_widget.actions()) {
        if (!action->isSeparator()) {
            actions.append(action->text());
        }
    }
    return {{QStringLiteral("class"), QString::fromLatin1(p_widget.metaObject()->className())},
            {QStringLiteral("parent"),
             p_widget.parentWidget() == nullptr
                 ? QString()
                 : QString::fromLatin1(p_widget.parentWidget()->metaObject()->className())},
            // A widget on the canvas is a window of its own to itself alone.
            {QStringLiteral("window"),
             p_widget.isWindow() && p_widget.graphicsProxyWidget() == nullptr},
            {QStringLiteral("visible"), p_widget.isVisible()},
            {QStringLiteral("maximized"), p_widget.isMaximized()},
            {QStringLiteral("windowTitle"), p_widget.windowTitle()},
            {QStringLiteral("title"), p_widget.property("title").toString()},
            {QStringLiteral("text"), p_widget.property("text").toString()},
            {QStringLiteral("toolTip"), p_widget.toolTip()},
            {QStringLiteral("font"), fontOf(p_widget.font())},
            {QStringLiteral("actions"), actions}};
}

/** The names of the files that this process has mapped; empty where the system doesn't tell. */
QJsonArray mappedLibraries()
{
    QSet<QString> names;
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (maps.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = maps.readAll().split('\n');
        for (const QByteArray& line : lines) {
            const int name = line.lastIndexOf('/') + 1;
            if (name > 0) {
                names.insert(QString::fromLocal8Bit(line.mid(name)));
            }
        }
    }
    return QJsonArray::fromStringList(names.values());
}

/**
 * Writes down the widgets of the program as soon as its window shows, and ends the program. On the
 * way there it makes an empty file beside that one for each step that it sees.
 */
class Probe : public QObject
{
public:
    explicit Probe(const QString& p_path) : m_path(p_path)
    {
        // A timer fires in the event loop alone, and so behind all steps of the start.
        QObject::connect(&m_timer, &QTimer::timeout, this, &Probe::look);
        m_timer.start(10);
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* p_watched, QEvent* p_event) override
    {
        if (p_watched == QCoreApplication::instance() &&
            p_event->type() == QEvent::LanguageChange) {
            m_fontBeforeTranslation = QApplication::font();
            mark("translation");
        } else if (qobject_cast<const QMainWindow*>(p_watched) != nullptr) {
            mark("window");
            if (p_event->type() == QEvent::Show) {
                mark("shown");
            }
        }
        return false;
    }

private:
    void mark(const char* p_step) const
    {
        QFile file(m_path + QLatin1Char('.') + QLatin1String(p_step));
        if (!file.exists()) {
            file.open(QIODevice::WriteOnly);
        }
    }

    void look()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const bool shows = std::any_of(windows.begin(), windows.end(), [](const QWidget* p_window) {
            return p_window->isVisible() && qobject_cast<const QMainWindow*>(p_window) != nullptr;
        });
        if (!shows) {
            return;
        }
        if (!m_written) {
            write();
            m_written = true;
        }
        // Again and again: the loop that has been left may be that of a box.
        QCoreApplication::exit(0);
    }

    void write() const
    {
        QJsonArray widgets;
        for (const QWidget* widget : QApplication::allWidgets()) {
            widgets.append(widgetOf(*widget));
        }
        QFile file(m_path);
        if (file.open(QIODevice::WriteOnly)) {
            file.write(
                QJsonDocument(QJsonObject{{QStringLiteral("font"), fontOf(QApplication::font())},
                                          {QStringLiteral("fontBeforeTranslation"),
                                           fontOf(m_fontBeforeTranslation)},
                                          {QStringLiteral("glIntegration"),
                                           qEnvironmentVariable("QT_XCB_GL_INTEGRATION")},
                                          {QStringLiteral("libraries"), mappedLibraries()},
                                          {QStringLiteral("widgets"), widgets}})
                    .toJson());
        }
    }

    QString m_path;
    QTimer m_timer;
    QFont m_fontBeforeTranslation;
    bool m_written = false;
};
} // namespace

/** Reads the live widgets of any program, which loads it as one of its plugins. */
class WidgetProbe : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "widgetprobe.json")

public:
    QObject* create(const QString& p_key, const QString& p_path) override
    {
        Q_UNUSED(p_key)
        return new Probe(p_path);
    }
};

#include "widgetprobe.moc"
