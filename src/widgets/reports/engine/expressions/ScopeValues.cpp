#include "widgets/reports/engine/expressions/ScopeValues.h"

#include "widgets/reports/engine/expressions/ReportScope.h"

namespace LimeReport {

namespace {

ScopeValue refused(const QString &error)
{
    ScopeValue value;
    value.error = error;
    value.quality = Nodes::Quality::Bad;
    return value;
}

} // namespace

ScopeValue fieldOf(const ReportScope &scope, const QString &name)
{
    QString known;
    for (int point = name.indexOf('.'); point >= 0; point = name.indexOf('.', point + 1)) {
        const QString source = name.left(point);
        const DataSource *rows = scope.source(source);
        if (!rows)
            continue;
        known = source;
        const int column = rows->column(name.mid(point + 1));
        if (column < 0)
            continue;
        ScopeValue found;
        const int row = scope.shownRow(source);
        found.quality = rows->quality(row, column);
        if (found.quality != Nodes::Quality::Bad)
            found.value = rows->value(row, column);
        return found;
    }
    if (!known.isEmpty())
        return refused(QStringLiteral("в источнике данных «%1» нет столбца «%2»")
                           .arg(known, name.mid(known.size() + 1)));
    const int point = name.indexOf('.');
    return refused(point < 0 ? QStringLiteral("«%1» — не «источник.столбец»").arg(name)
                             : QStringLiteral("нет источника данных «%1»").arg(name.left(point)));
}

ScopeValue variableOf(const ReportScope &scope, const QString &name)
{
    ScopeValue found;
    if (name == QLatin1String("#PAGE")) {
        found.value = scope.page();
    } else if (name == QLatin1String("#PAGE_COUNT")) {
        found.needsSecondPass = !scope.pageCount();
        found.value = scope.pageCount() ? QVariant(*scope.pageCount()) : QVariant();
    } else if (scope.hasVariable(name)) {
        found.value = scope.variable(name);
    } else {
        return refused(QStringLiteral("нет переменной «%1»").arg(name));
    }
    return found;
}

} // namespace LimeReport
