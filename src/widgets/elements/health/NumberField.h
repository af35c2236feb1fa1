#pragma once

#include "widgets/WidgetsExport.h"

#include <QWidget>

class QDoubleSpinBox;

namespace Widgets {

/// A number to be changed by keyboard, by two buttons or on the on-screen numpad. GUI thread.
class WIDGETS_EXPORT NumberField : public QWidget
{
    Q_OBJECT

public:
    explicit NumberField(QWidget *parent = nullptr);

    void setRange(double minimum, double maximum, int decimals, double step);
    void setUnit(const QString &unit);
    /// Tells nothing.
    void setValue(double value);
    double value() const;

signals:
    void valueChanged(double value);

private:
    void openNumpad();

    QDoubleSpinBox *m_box;
};

} // namespace Widgets
