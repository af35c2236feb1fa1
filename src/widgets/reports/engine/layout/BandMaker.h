#pragma once

#include "widgets/reports/engine/layout/BandImage.h"
#include "widgets/reports/engine/layout/ItemBox.h"
#include "widgets/reports/engine/layout/LateTexts.h"
#include "widgets/reports/engine/template/ReportTemplate.h"
#include "widgets/reports/engine/text/TextStyle.h"

#include <memory>
#include <vector>

namespace LimeReport {

class ContentExpander;

/// Fills in bands: contents of their items for the scope's rows, heights of what grows. Rendering
/// thread.
class BandMaker
{
public:
    BandMaker(const ReportTemplate &report, ReportScope &scope, ContentExpander &expander,
              LateTexts &late);

    /// `place`: where the band stands; its item is set here. `background`: in place of the band's
    /// own when it is valid.
    BandImage make(const TemplateItem &band, const ContentPlace &place,
                   const QColor &background = QColor());
    /// Of an item on the sheet itself.
    BandImage makeLoose(const TemplateItem &item, const ContentPlace &place);
    /// Whether a band tells the page it is on.
    bool dependsOnPage(const TemplateItem &band);

private:
    ItemBox box(const TemplateItem &item);
    void fillText(ItemBox &box);
    void fillImage(ItemBox &box);
    void fillDrawn(ItemBox &box);
    void fillLayout(ItemBox &box);
    void fillUnknown(ItemBox &box);
    void grow(ItemBox &box);
    void follow(ItemBoxes &boxes);
    void fail(ItemBox &box, const QString &error, const QString &told);
    void emitBox(const ItemBox &box, const QPointF &origin, BandImage &image) const;
    void emitBand(const TemplateItem &band, const QColor &background, BandImage &image) const;
    const TextStyle &style(const TemplateItem &item);
    const LateTexts::Place &position();

    const ReportTemplate &m_report;
    ReportScope &m_scope;
    ContentExpander &m_expander;
    LateTexts &m_late;
    LateTexts::Place m_position; // of the band under way, once something waits for it
    std::vector<std::unique_ptr<TextStyle>> m_styles;
    std::vector<signed char> m_dependsOnPage;
};

} // namespace LimeReport
