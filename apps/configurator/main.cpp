#include "apps/common/desktop/DesktopSetup.h"
#include "apps/common/desktop/SignalHandlers.h"
#include "apps/common/process/StandardStreams.h"
#include "apps/common/process/UnicodeLocale.h"
#include "apps/configurator/ConfiguratorOptions.h"
#include "apps/configurator/UiMap.h"

#include "editor/shell/MainWindow.h"
#include "editor/shell/ProjectFiles.h"

#include "nodes/system/systemCore.h"

#include <QApplication>
#include <QTimer>

#include <memory>

int main(int argc, char **argv)
{
    Host::StandardStreams::outliveReaders();
    Host::UseUnicodeLocale();
    Configurator::ConfiguratorOptions options;
    if (const auto done = options.parse(argc, argv))
        return *done;
    Host::DesktopSetup::choosePlatform(options.platform, false);

    QApplication application(argc, argv);
    Host::DesktopSetup::prepare(QStringLiteral("configurator"),
                                QStringLiteral(CONFIGURATOR_VERSION));
    const QString station = options.station.empty()
                                ? QApplication::applicationDirPath() + QStringLiteral("/station")
                                : QString::fromStdString(options.station);
    QStringList stationOptions;
    for (const std::string &option : options.stationOptions)
        stationOptions << QString::fromStdString(option);
    for (const auto &[name, value] : options.defines)
        stationOptions << QStringLiteral("--define") << QString::fromStdString(name + '=' + value);
    // The main window decides what becomes of unsaved work when the desktop ends.
    QGuiApplication::setFallbackSessionManagementEnabled(false);
    const Host::SignalHandlers signalHandlers; // outlives the window, which keeps unsaved work
    Editor::MainWindow window(station, stationOptions);
    for (const auto &[name, value] : options.defines)
        window.workspace().session().core().SetDefine(name, value);
    std::unique_ptr<Configurator::UiMap> map;
    if (!options.uiMap.empty())
        map = std::make_unique<Configurator::UiMap>(QString::fromStdString(options.uiMap));
    QObject::connect(&signalHandlers, &Host::SignalHandlers::received, &application,
                     &QCoreApplication::quit);
    window.show();
    if (!options.project.empty())
        QTimer::singleShot(0, &window, [&window, &options] {
            window.files().open(QString::fromStdString(options.project));
        });
    return QApplication::exec();
}
