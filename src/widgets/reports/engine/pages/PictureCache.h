#pragma once

#include "widgets/WidgetsExport.h"

#include <QByteArray>
#include <QCache>
#include <QImage>
#include <QString>

namespace LimeReport {

/// Decodes pictures and keeps some. The same bytes give the same image, so that a file embeds a
/// logo once. One thread.
class WIDGETS_EXPORT PictureCache
{
public:
    PictureCache();

    /// Null with why it cannot be shown, for operators.
    QImage picture(const QByteArray &bytes, QString &error);

private:
    QCache<QByteArray, QImage> m_images;
};

} // namespace LimeReport
