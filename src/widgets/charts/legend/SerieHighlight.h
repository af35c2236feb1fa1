#pragma once

#include <QObject>
#include <QPointer>

#include <optional>

class QPen;
class QwtScaleWidget;

namespace Widgets {

class ISerie;

/// One series of a plot brought to the front: its curve thicker and above the others, its value
/// axis with a bold title and line. GUI thread.
class SerieHighlight : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;
    ~SerieHighlight() override;

    /// Null: none. The one before gets its looks back.
    void set(ISerie *serie);
    ISerie *serie() const;

private:
    void raise();
    void takeBack();
    /// After the series took its pen from its node again.
    void thickenAgain();
    void markAxis(bool isMarked);

    QPointer<ISerie> m_serie;
    QPointer<QwtScaleWidget> m_axis;
    double m_width = 0; // of its pen before
};

} // namespace Widgets
