#pragma once

#include <QLabel>

namespace Widgets {

/// A line over the lower edge of a canvas that tells what is missing there. Takes no input.
/// GUI thread.
class PlotNote : public QLabel
{
    Q_OBJECT

public:
    explicit PlotNote(QWidget *canvas);

    /// "" hides it.
    void tell(const QString &text);
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();
};

} // namespace Widgets
