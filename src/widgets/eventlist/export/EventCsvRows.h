#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/events/BasicEvent.h"

#include <QByteArray>

#include <vector>

namespace Widgets {

/// Events as rows of a table for spreadsheets: fields apart by semicolons, as those of Russian
/// desktops expect, UTF-8 with its mark, texts whole and quoted. Any thread.
struct WIDGETS_EXPORT EventCsvRows
{
    static QByteArray header();
    static QByteArray rows(const std::vector<Nodes::BasicEvent> &events);
};

} // namespace Widgets
