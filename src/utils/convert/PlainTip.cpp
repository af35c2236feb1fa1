#include "utils/convert/PlainTip.h"

#include <QTextDocument>

namespace Utils {

QString PlainTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

QString PlainCaption(QString text)
{
    return text.replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace Utils
