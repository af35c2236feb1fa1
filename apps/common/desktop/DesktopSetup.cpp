#include "apps/common/desktop/DesktopSetup.h"

#include "utils/convert/MetaTypes.h"
#include "utils/settings/QtTexts.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>

#include <clocale>
#include <cstdlib>

namespace Host {

void DesktopSetup::choosePlatform(const std::string &platform, bool needsNoDisplay)
{
    const bool hasDisplay = std::getenv("DISPLAY") || std::getenv("WAYLAND_DISPLAY");
    if (!platform.empty())
        setenv("QT_QPA_PLATFORM", platform.c_str(), 1);
    else if (needsNoDisplay && !hasDisplay)
        setenv("QT_QPA_PLATFORM", "offscreen", 0);
    // Nothing here draws with OpenGL, but under X Qt would load it, and a compiler with it.
    setenv("QT_XCB_GL_INTEGRATION", "none", 0);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps); // icons as fine as the display
}

void DesktopSetup::prepare(const QString &name, const QString &version)
{
    QApplication::setApplicationName(name);
    QApplication::setApplicationVersion(version);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    // A dark desktop must not put its light texts on grounds that are drawn light, nor dark icons
    // on its own.
    QApplication::setPalette(QApplication::style()->standardPalette());
    // Qt takes the user's locale over; numbers in project files have a point in every country.
    std::setlocale(LC_NUMERIC, "C");
    Utils::registerMetaTypes();
    (void)Utils::QtTexts::install(*qApp); // logged
}

} // namespace Host
