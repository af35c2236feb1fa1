#pragma once

#include "widgets/reports/engine/layout/BandMaker.h"
#include "widgets/reports/engine/layout/BandTree.h"
#include "widgets/reports/engine/layout/LayoutContext.h"
#include "widgets/reports/engine/layout/SheetFlow.h"

#include <vector>

namespace LimeReport {

/// Puts bands on sheets: begins a sheet when one is full, with its headers and footers, divides
/// what is too high, keeps together what belongs together, runs rows in columns.
class BandPrinter
{
public:
    struct Request
    {
        const TemplateItem *band = nullptr;
        ContentPlace place;
        QColor background;
        /// 0.1 mm that have to be left below it on the sheet.
        double keepBelow = 0;
        /// It is a row of its band, taken by the aggregates.
        bool isRow = false;
        /// Printed again on top of each further sheet until forget().
        bool isReprinted = false;
    };

    BandPrinter(LayoutContext &context, LateTexts &late, const TemplatePage &page, int index,
                const BandTree &tree);

    void print(const Request &request);
    void forget(const TemplateItem *band);
    /// At the foot of the sheet.
    void printTearOff(const Request &request);
    void placeholder(const TemplateItem &band, const QString &told);

    void newSheet();
    void closeSheet();
    bool isFresh() const { return m_flow.isFresh(); }

    /// From here on bands wait, to be put on one sheet if that is possible, until release().
    void hold();
    bool isHolding() const { return m_isHolding; }
    void release();

    /// Rows of the band run in columns until endColumns().
    void beginColumns(int count, bool isDownFirst);
    void endColumns();

private:
    struct Held
    {
        Request request;
        BandImage image;
        ReportScope::Position position;
        int page;
    };
    struct Columns
    {
        int count = 1;
        bool isDownFirst = false;
        int index = 0;
        double top = 0, y = 0, bottom = 0;
    };
    struct Reprint
    {
        Request request;
        ReportScope::Position position;
    };

    void commit(Held &held);
    void putDivided(Held &held);
    void putInColumn(Held &held);
    void nextColumn(double height);
    void refresh(Held &held);
    void finishRow(const Held &held);
    void printFixed(const Bands &bands, const char *suppressed);
    double footerHeight();
    void reprint();
    void printLoose();
    bool isLeftOut(const Request &request, const BandImage &image) const;
    bool isDivisible(const Held &held) const;
    const TextStyle &style(int number);

    LayoutContext &m_context;
    BandMaker m_maker;
    SheetFlow m_flow;
    const BandTree &m_tree;
    std::vector<Reprint> m_reprints;
    std::vector<Held> m_held;
    double m_heldHeight = 0;
    bool m_isHolding = false;
    Columns m_columns;
    int m_sheets = 0;
    std::vector<std::unique_ptr<TextStyle>> m_styles;
    std::vector<const TemplateItem *> m_items;
};

} // namespace LimeReport
