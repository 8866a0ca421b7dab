#include "base/config.h"
#include "base/programversion.h"
#include "base/systemlanguage.h"
#include "document/modulesid.h"
#include "logging/logsetup.h"
#include "shell/appearance.h"
#include "shell/commandline.h"
#include "shell/interfacelanguage.h"
#include "shell/mainwindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDeadlineTimer>
#include <QDebug>
#include <QDir>
#include <QLocale>
#include <QSysInfo>
#include <QThread>
#include <QTime>
#include <QTranslator>
#include <QWindow>

#include <memory>

namespace
{
/**
 * Keeps Qt from loading OpenGL along with a window of an X display, unless the environment says
 * what to load: nothing is drawn with it, and it takes half of the start's time and memory.
 */
void leaveOutOpenGl()
{
    const char name[] = "QT_XCB_GL_INTEGRATION";
    if (!qEnvironmentVariableIsSet(name)) {
        qputenv(name, "none");
    }
}

/** A path as it stays right when the current folder changes; nothing stays nothing. */
QString absolutePath(const QString& p_path)
{
    return p_path.isEmpty() || QDir::isAbsolutePath(p_path)
               ? p_path
               : QDir::cleanPath(QDir::current().absoluteFilePath(p_path));
}

/**
 * Waits until an X server has given the window its place, a second at most: a message box that
 * comes before stands in the middle of where the window was going to be. Elsewhere a window has its
 * place at once.
 */
void awaitPlace(const QWidget& p_window)
{
    const QDeadlineTimer deadline(QGuiApplication::platformName() == QLatin1String("xcb") ? 1000
                                                                                          : 0);
    while (!p_window.windowHandle()->isExposed() && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QThread::msleep(1);
    }
}

void writeBanner(const QApplication& p_application)
{
    // Without quotes, and not through the code page, which QDebug doesn't take a text to be in.
    qInfo().noquote() << "Starting Tiler version" << programVersion();
    qInfo() << "Windows version" << QSysInfo::windowsVersion();
    qInfo() << "number of logical cores =" << QThread::idealThreadCount();
    qInfo() << "locale =" << QLocale();
    qInfo().noquote() << "install dir =" << QCoreApplication::applicationDirPath();
    qInfo() << "device pixel ratio =" << p_application.devicePixelRatio();
}
} // namespace

int main(int argc, char** argv)
{
    qsrand(static_cast<uint>(QTime(0, 0, 0).secsTo(QTime::currentTime())));
    answerWithoutWindow(argc, argv);
    leaveOutOpenGl();
    auto guard = std::make_unique<WindowSystemGuard>();
    QApplication application(argc, argv);
    guard.reset();

    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption logLevel = logLevelOption();
    parser.addOption(logLevel);
    parser.process(QCoreApplication::arguments());

    setUpLog(parser.value(logLevel).toLower());
    writeBanner(application);
    configSetUp();
    qRegisterMetaType<modulesId>("modulesId");

    setUpAppearance();
    QTranslator ofQt;
    QTranslator translator;
    setUpInterface(systemLanguageCode(), translator, ofQt);

    MainWindow window;
    window.showMaximized();
    if (argc > 1) {
        awaitPlace(window);
        window.openPath(absolutePath(QString::fromLocal8Bit(argv[1])));
    }
    return QApplication::exec();
}
