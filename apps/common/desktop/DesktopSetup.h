#pragma once

#include <string>

class QString;

namespace Host::DesktopSetup {

/// Makes Qt use that platform plug-in; "" lets Qt choose, or take none that shows anything when
/// `needsNoDisplay` and there is no display. Before the application object is made.
void choosePlatform(const std::string &platform, bool needsNoDisplay);

/// What every program that shows the library does once it has its QApplication.
void prepare(const QString &name, const QString &version);

} // namespace Host::DesktopSetup
