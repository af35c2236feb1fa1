#pragma once

#include <QSet>
#include <QString>

namespace Widgets {

/// Names of sheets as spreadsheets take them: 31 characters, some of them forbidden, no two alike
/// whatever the case.
class XlsxSheetNames
{
public:
    QString next(const QString &wanted);

private:
    QSet<QString> m_taken;
};

} // namespace Widgets
