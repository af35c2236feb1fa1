#pragma once

#include "widgets/WidgetsExport.h"

#include <QLayout>
#include <QList>

class QSpacerItem;

namespace Widgets {

/// Controls side by side, in further rows where the width does not do for one. The stretch moves
/// what follows it to the right.
class WIDGETS_EXPORT WrapLayout : public QLayout
{
public:
    WrapLayout();
    ~WrapLayout() override;

    void addStretch();
    /// Width that may be asked for at least: one row, unless that is wider.
    void setRoom(int width);

    void addItem(QLayoutItem *item) override;
    int count() const override { return m_items.size(); }
    QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    using Row = QList<QLayoutItem *>;

    QList<Row> rows(int width) const;
    static int heightOf(const Row &row);
    int widthOf(const Row &row) const;
    void placeRow(const Row &row, const QRect &rect) const;

    QList<QLayoutItem *> m_items;
    QSpacerItem *m_stretch = nullptr; // one of them
    int m_room = 0;
};

} // namespace Widgets
