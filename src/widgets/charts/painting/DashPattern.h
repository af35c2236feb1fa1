#pragma once

#include <QPen>

#include <vector>

namespace Widgets {

/// Which pixel columns a line that is not solid leaves out. Counted along x from a place that
/// moves with the data, so that neither panning nor new points make the dashes crawl.
class DashPattern
{
public:
    /// Solid.
    DashPattern() = default;
    /// As the pen has it, for a line `width` pixels wide, counted from the pixel `origin`.
    DashPattern(const QPen &pen, int width, double origin);
    /// Short equal dots, unlike any style of a pen: a doubtful stretch.
    static DashPattern dotted(int width, double origin);

    [[nodiscard]] bool isSolid() const { return m_ends.empty(); }
    [[nodiscard]] bool isOn(int pixel) const;
    /// Pixels of one repetition; 0 when solid.
    [[nodiscard]] int length() const { return m_ends.empty() ? 0 : m_ends.back(); }

private:
    void setLengths(const QVector<qreal> &lengths, double width, double origin);

    std::vector<int> m_ends; // of dash, gap, dash ...: pixels from the beginning
    int m_origin = 0;
};

} // namespace Widgets
