#include "apps/station/StationApplication.h"
#include "apps/station/StationOptions.h"

#include "utils/MetaTypes.h"

#include <QApplication>
#include <QStyleFactory>

#include <clocale>

int main(int argc, char **argv)
{
    Station::StationOptions options;
    if (const auto done = options.parse(argc, argv))
        return *done;
    options.applyPlatform();

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("station"));
    QApplication::setApplicationVersion(QStringLiteral(STATION_VERSION));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // Qt takes the user's locale over; numbers in project files have a point in every country.
    std::setlocale(LC_NUMERIC, "C");
    Utils::registerMetaTypes();

    Station::StationApplication station(options);
    return station.run();
}
