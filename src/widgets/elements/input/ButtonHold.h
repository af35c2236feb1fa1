#pragma once

#include <QObject>

namespace Widgets {

/// Watches over a button that is held down: a menu that opens, a modal window or a release that
/// reaches another window end the hold without the button's hearing of it. GUI thread.
class ButtonHold : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void begin();
    void end();

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// The button is no longer held, or was let go already.
    void lost();

private:
    unsigned m_number = 0; ///< of the hold
};

} // namespace Widgets
