#include "apps/common/desktop/DesktopSetup.h"
#include "apps/common/process/StandardStreams.h"
#include "apps/common/process/UnicodeLocale.h"
#include "apps/station/StationApplication.h"
#include "apps/station/StationOptions.h"

#include <QApplication>

int main(int argc, char **argv)
{
    Host::StandardStreams::outliveReaders();
    Host::UseUnicodeLocale();
    Station::StationOptions options;
    if (const auto done = options.parse(argc, argv))
        return *done;
    Host::DesktopSetup::choosePlatform(options.platform, options.takesScreenshots());

    QApplication application(argc, argv);
    Host::DesktopSetup::prepare(QStringLiteral("station"), QStringLiteral(STATION_VERSION));

    Station::StationApplication station(options);
    return station.run();
}
