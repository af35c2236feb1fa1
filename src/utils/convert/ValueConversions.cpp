#include "utils/convert/ValueConversions.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>
#include <vector>

namespace Utils {

namespace {

QFont makeFont(const Nodes::NFont &font)
{
    QFont result(QString::fromStdString(font.family), std::max(1, font.pointSize), -1, false);
    result.setBold(font.bold);
    result.setUnderline(font.underline);
    result.setItalic(font.italic);
    result.setStrikeOut(font.strikeOut);
    return result;
}

} // namespace

QColor NColorToQColor(const Nodes::NColor &color)
{
    return QColor(color.red, color.green, color.blue, color.alpha);
}

QFont NFontToQFont(const Nodes::NFont &font)
{
    // Screens use a few fonts in turns, and what Qt finds out about one stays with its copies, the
    // resolution it was made for included.
    constexpr std::size_t most = 8;
    thread_local std::vector<std::pair<Nodes::NFont, QFont>> recent;
    thread_local double resolution = 0;
    const QScreen *screen = QGuiApplication::primaryScreen();
    const double present = screen ? screen->logicalDotsPerInchY() : 0;
    if (std::exchange(resolution, present) != present)
        recent.clear();
    const auto known = std::find_if(recent.cbegin(), recent.cend(),
                                    [&font](const auto &entry) { return entry.first == font; });
    if (known != recent.cend())
        return known->second;
    if (recent.size() == most)
        recent.erase(recent.begin());
    recent.emplace_back(font, makeFont(font));
    return recent.back().second;
}

QPen NPenToQPen(const Nodes::NPen &pen)
{
    static const Qt::PenStyle styles[] = {Qt::NoPen, Qt::SolidLine, Qt::DashLine, Qt::DotLine,
                                          Qt::DashDotLine};
    const bool isKnown = pen.style >= Nodes::NPen::None && pen.style <= Nodes::NPen::DashDot;
    return QPen(NColorToQColor(pen.color), pen.width, isKnown ? styles[pen.style] : Qt::SolidLine,
                Qt::SquareCap, Qt::MiterJoin);
}

QPoint NPointToQPoint(const Nodes::NPoint &point)
{
    return {point.x, point.y};
}

Nodes::NPoint QPointToNPoint(const QPoint &point)
{
    return {point.x(), point.y()};
}

QRect NRectToQRect(const Nodes::NRect &rect)
{
    return {rect.x, rect.y, rect.width, rect.height};
}

Qt::Alignment NAligmentToQtAligment(Nodes::enAlignmentHorizontal horizontal,
                                    Nodes::enAlignmentVertical vertical)
{
    Qt::Alignment result = Qt::AlignHCenter;
    if (horizontal == Nodes::AlignmentLeft)
        result = Qt::AlignLeft;
    else if (horizontal == Nodes::AlignmentRight)
        result = Qt::AlignRight;
    if (vertical == Nodes::AlignmentTop)
        return result | Qt::AlignTop;
    return result | (vertical == Nodes::AlignmentBottom ? Qt::AlignBottom : Qt::AlignVCenter);
}

} // namespace Utils
