#include "apps/station/StandardStreams.h"
#include "apps/station/StationApplication.h"
#include "apps/station/StationOptions.h"

#include "utils/convert/MetaTypes.h"

#include <QApplication>
#include <QStyleFactory>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>

namespace {

// A service or a bare account often has no locale, and paths and arguments in Russian would then
// reach programs and files as question marks.
void useUnicodePaths()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        setenv("LC_ALL", "C.UTF-8", 1);
}

} // namespace

int main(int argc, char **argv)
{
    Station::StandardStreams::outliveReaders();
    useUnicodePaths();
    Station::StationOptions options;
    if (const auto done = options.parse(argc, argv))
        return *done;
    options.applyPlatform();

    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps); // icons as fine as the display
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
