#pragma once

#include <QDateTime>
#include <QString>

namespace Widgets {

/// One file of a list. A value.
struct FileInfoData
{
    QString name;
    quint64 size = 0; ///< bytes
    QDateTime created;
    QDateTime changed;
};

} // namespace Widgets
