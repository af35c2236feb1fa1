#pragma once

#include <QString>

namespace Editor {

/// Why a file of about that many bytes could not be replaced, and what to do, in Russian; "" when
/// nothing is found that would keep it from being so. Asks the disk: after it has refused.
QString WriteObstacle(const QString &file, qint64 bytes);

} // namespace Editor
