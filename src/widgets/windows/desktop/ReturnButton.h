#pragma once

#include <QPushButton>

namespace Widgets {

/// The way back to minimised frames on panels without a task bar: a button in the corner of the
/// primary screen, above everything, for as long as one is minimised. GUI thread.
class ReturnButton : public QPushButton
{
    Q_OBJECT

public:
    ReturnButton();
};

} // namespace Widgets
