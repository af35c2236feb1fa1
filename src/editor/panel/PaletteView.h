#pragma once

#include <QPixmap>

class QAbstractItemView;

namespace Editor {

/// What is dragged out of a palette is shown by its icons alone, beside the pointer: rows or tiles
/// would cover the place where it is going to land.
namespace PaletteDrag {

/// Of what is selected, at most four beside each other.
QPixmap picture(const QAbstractItemView &view);
void start(QAbstractItemView &view, Qt::DropActions actions);

} // namespace PaletteDrag

/// A view of Qt's, dragged out of so.
template <class View> class PaletteView : public View
{
public:
    using View::View;

protected:
    void startDrag(Qt::DropActions actions) override { PaletteDrag::start(*this, actions); }
};

} // namespace Editor
