#pragma once

#include "widgets/reports/engine/template/TemplateItem.h"

#include <QMarginsF>
#include <QSizeF>
#include <QStringList>

#include <memory>
#include <vector>

namespace LimeReport {

/// One page of a template; what it prints may run over many sheets.
struct TemplatePage
{
    /// The page itself: name, properties and, as children, bands and items that stand on the page.
    TemplateItem item;
    /// 0.1 mm, already turned for landscape.
    QSizeF size;
    /// 0.1 mm.
    QMarginsF margins;

    QRectF printed() const { return QRectF(QPointF(), size).marginsRemoved(margins); }
};

/// A template as it has been read. Immutable, shared by threads.
struct ReportTemplate
{
    QString name;
    std::vector<TemplatePage> pages;
    /// `datasourcesManager` as it stands in the file: queries, links, variables.
    QVariantMap dataSources;
    /// `scriptContext` as it stands in the file.
    QVariantMap scriptContext;
    /// Directory that files named by items are looked for in; nothing outside it is read. ""
    /// when the template came from no file.
    QString directory;
    /// Items and properties that are not known here, and values that could not be read.
    QStringList problems;
    int itemCount = 0;
};

using ReportTemplatePtr = std::shared_ptr<const ReportTemplate>;

} // namespace LimeReport
