#pragma once

#include "widgets/reports/engine/pages/PageItem.h"

#include <QVector>

#include <vector>

namespace LimeReport {

struct TemplateItem;

/// A band with its contents filled in, ready to be put on a sheet. Places of the items are relative
/// to the band, 0.1 mm.
struct BandImage
{
    const TemplateItem *band = nullptr;
    double height = 0;
    QVector<PageItem> items;
    /// Nothing stands on it that shows anything.
    bool isEmpty = false;
};

} // namespace LimeReport
