#include "widgets/charts/plots/PlotNote.h"

#include <QEvent>

namespace Widgets {

namespace {

constexpr int gap = 8; // pixels to the edges of the canvas

} // namespace

PlotNote::PlotNote(QWidget *canvas) : QLabel(canvas)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setAlignment(Qt::AlignCenter);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setStyleSheet(QStringLiteral("QLabel { color: #202428; background: #fff4d6; border: 1px solid "
                                 "#8a6d1f; padding: 4px 8px; font-size: 14px; }"));
    hide();
    canvas->installEventFilter(this);
}

void PlotNote::tell(const QString &text)
{
    setText(text);
    setVisible(!text.isEmpty());
    place();
}

bool PlotNote::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize)
        place();
    return QLabel::eventFilter(watched, event);
}

void PlotNote::place()
{
    const QSize canvas = parentWidget()->size();
    const int most = qMax(0, canvas.width() - 2 * gap);
    setWordWrap(false);
    const bool fits = sizeHint().width() <= most;
    setWordWrap(!fits);
    const int wide = fits ? sizeHint().width() : most;
    const int high = fits ? sizeHint().height() : heightForWidth(most);
    setGeometry((canvas.width() - wide) / 2, canvas.height() - high - gap, wide, high);
    raise();
}

} // namespace Widgets
