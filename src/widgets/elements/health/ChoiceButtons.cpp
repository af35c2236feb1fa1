#include "widgets/elements/health/ChoiceButtons.h"

#include "widgets/dialogs/DialogLook.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace Widgets {

ChoiceButtons::ChoiceButtons(const std::vector<Choice> &choices, QWidget *parent) : QWidget(parent)
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    for (const Choice &choice : choices) {
        auto *button = new QPushButton(choice.text, this);
        button->setCheckable(true);
        button->setAutoDefault(false);
        MakeTouchable(*button);
        layout->addWidget(button);
        m_buttons.emplace_back(choice.id, button);
        connect(button, &QPushButton::clicked, this, [this, button, id = choice.id] {
            button->setChecked(!button->isChecked());
            emit pressed(id);
        });
    }
}

void ChoiceButtons::choose(int id)
{
    for (const auto &[of, button] : m_buttons)
        button->setChecked(of == id);
}

} // namespace Widgets
