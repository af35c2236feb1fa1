#pragma once

#include <QPushButton>

namespace Widgets {

/// Key of an on-screen keyboard. Shows its text as it is, "&" included, and never takes the
/// keyboard focus, so that the field keeps its cursor.
class KeyButton : public QPushButton
{
    Q_OBJECT

public:
    explicit KeyButton(QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace Widgets
