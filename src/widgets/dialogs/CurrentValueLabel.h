#pragma once

#include <QLabel>

namespace Widgets {

/// Line above the field of an on-screen keyboard: the value of now, which goes on changing while
/// another one is entered. Hidden without a value. GUI thread.
class CurrentValueLabel : public QLabel
{
    Q_OBJECT

public:
    explicit CurrentValueLabel(QWidget *parent);

    void showValue(const QString &text);
    /// What is said about the last key, until the next one; "" for nothing.
    void showHint(const QString &hint);

private:
    void compose();

    QString m_value;
    QString m_hint;
};

} // namespace Widgets
