#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/reports/engine/template/ReportTemplate.h"

#include <memory>
#include <vector>

namespace LimeReport {

using Bands = std::vector<const TemplateItem *>;

/// A group of a data band's rows: while `groupFieldName` or `condition` keeps its value.
struct GroupBands
{
    const TemplateItem *header = nullptr;
    Bands footers;
};

/// A Data or SubDetail band with all that is printed because of it.
struct DataBands
{
    const TemplateItem *band = nullptr;
    Bands headers;
    Bands footers;
    std::vector<GroupBands> groups; ///< the outermost first
    std::vector<DataBands> details;
};

/// The bands of one page of a template, by what they are for and in the order of `bandIndex`.
struct WIDGETS_EXPORT BandTree
{
    Bands pageHeaders, pageFooters, reportHeaders, reportFooters, tearOffs;
    std::vector<DataBands> data;
    /// Items that stand on the sheet itself.
    Bands loose;

    /// `problems`: bands that belong to none, and classes that are not known.
    static BandTree of(const TemplatePage &page, QStringList &problems);
};

/// Class without the name space that some files write.
QString plainClass(const TemplateItem &item);

} // namespace LimeReport
