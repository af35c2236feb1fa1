#pragma once

#include "widgets/WidgetsExport.h"

#include <QWidget>

#include <vector>

class QPushButton;

namespace Widgets {

/// A row of buttons, one of which is chosen. A press asks only: whoever owns them chooses. GUI
/// thread.
class WIDGETS_EXPORT ChoiceButtons : public QWidget
{
    Q_OBJECT

public:
    struct Choice
    {
        int id;
        QString text;
    };

    explicit ChoiceButtons(const std::vector<Choice> &choices, QWidget *parent = nullptr);

    void choose(int id);

signals:
    void pressed(int id);

private:
    std::vector<std::pair<int, QPushButton *>> m_buttons;
};

} // namespace Widgets
