#include "widgets/charts/legend/LegendDelegate.h"

#include "widgets/charts/series/SerieColumn.h"
#include "widgets/elements/painting/ElementPainting.h"
#include "widgets/elements/painting/TabularText.h"

#include "utils/convert/PlainTip.h"

#include <QAbstractItemView>

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace Widgets {

namespace {

int textRoom(const QStyleOptionViewItem &option)
{
    return option.rect.width() - 2 * LegendDelegate::Margin;
}

} // namespace

void LegendDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index) const
{
    QStyleOptionViewItem base = option;
    initStyleOption(&base, index);
    const QString text = base.text;
    base.text.clear();
    base.state &= ~QStyle::State_HasFocus;
    const QWidget *view = option.widget;
    QStyle *style = view ? view->style() : QApplication::style();
    style->drawControl(QStyle::CE_ItemViewItem, &base, painter, view);

    QRect place = option.rect.adjusted(Margin, 0, -Margin, 0);
    if (!base.icon.isNull())
        place.setLeft(
            style->subElementRect(QStyle::SE_ItemViewItemDecoration, &base, view).right() + Margin);
    const bool isSelected = base.state.testFlag(QStyle::State_Selected);
    painter->save();
    painter->setClipRect(option.rect);
    painter->setFont(base.font);
    painter->setPen(base.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    const QString shown = base.fontMetrics.elidedText(text, Qt::ElideRight, place.width());
    // Where it is cut, digits of one width do not matter and might not fit.
    if (shown == text)
        TabularText::draw(*painter, place, base.displayAlignment, text);
    else
        painter->drawText(place, int(Qt::AlignLeft | Qt::AlignVCenter), shown);
    painter->restore();
    const QVariant quality = index.data(SerieQualityRole);
    if (quality.isValid() && !text.isEmpty())
        ElementPainting::drawQualityMark(*painter, option.rect.adjusted(1, 1, -2, -2),
                                         Nodes::Quality(quality.toInt()), base.displayAlignment);
}

QSize LegendDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QString text = index.data(Qt::DisplayRole).toString();
    return {int(TabularText::width(option.font, text)) + 2 * Margin + 2,
            option.fontMetrics.height()};
}

bool LegendDelegate::helpEvent(QHelpEvent *event, QAbstractItemView *view,
                               const QStyleOptionViewItem &option, const QModelIndex &index)
{
    if (event->type() != QEvent::ToolTip)
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    const QString text = index.data(Qt::DisplayRole).toString();
    QString tip = index.data(Qt::ToolTipRole).toString();
    if (option.fontMetrics.horizontalAdvance(text) > textRoom(option) && !tip.contains(text))
        tip = tip.isEmpty() ? Utils::PlainTip(text) : Utils::PlainTip(text + '\n' + tip);
    QToolTip::showText(event->globalPos(), tip, view);
    return true;
}

} // namespace Widgets
