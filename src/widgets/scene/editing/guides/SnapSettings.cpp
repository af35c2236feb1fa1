#include "widgets/scene/editing/guides/SnapSettings.h"

#include <QJsonObject>

namespace Widgets {

namespace {

const QString gridKey = QStringLiteral("toGrid");
const QString stepKey = QStringLiteral("gridStep");
const QString elementsKey = QStringLiteral("toElements");

bool isSame(const SnapOptions &a, const SnapOptions &b)
{
    return a.toGrid == b.toGrid && a.gridStep == b.gridStep && a.toElements == b.toElements;
}

int inRange(int step)
{
    return qBound(SnapOptions::LeastStep, step, SnapOptions::GreatestStep);
}

} // namespace

SnapSettings &SnapSettings::process()
{
    static SnapSettings settings(QStringLiteral("configurator.json"));
    return settings;
}

SnapSettings::SnapSettings(const QString &fileName)
    : Configurator(QStringLiteral("snapping"), fileName)
{
    QJsonObject kept;
    if (!load(kept)) // a warning is in the log already
        return;
    m_options.toGrid = kept.value(gridKey).toBool(m_options.toGrid);
    m_options.gridStep = inRange(kept.value(stepKey).toInt(m_options.gridStep));
    m_options.toElements = kept.value(elementsKey).toBool(m_options.toElements);
}

void SnapSettings::setToGrid(bool on)
{
    SnapOptions options = m_options;
    options.toGrid = on;
    set(options);
}

void SnapSettings::setGridStep(int pixels)
{
    SnapOptions options = m_options;
    options.gridStep = inRange(pixels);
    set(options);
}

void SnapSettings::setToElements(bool on)
{
    SnapOptions options = m_options;
    options.toElements = on;
    set(options);
}

void SnapSettings::set(const SnapOptions &options)
{
    if (isSame(options, m_options))
        return;
    m_options = options;
    (void)save({{gridKey, options.toGrid},
                {stepKey, options.gridStep},
                {elementsKey, options.toElements}}); // a failure is in the log
    emit changed();
}

} // namespace Widgets
