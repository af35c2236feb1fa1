#include "utils/settings/QtTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace Utils {

bool QtTexts::install(QCoreApplication &application)
{
    auto *texts = new QTranslator(&application);
    const QString place = QLibraryInfo::location(QLibraryInfo::TranslationsPath);
    if (texts->load(QStringLiteral("qtbase_ru"), place))
        return QCoreApplication::installTranslator(texts);
    qWarning("Qt's Russian texts are not in %s: install the package qttranslations5-l10n",
             qPrintable(place));
    delete texts;
    return false;
}

} // namespace Utils
