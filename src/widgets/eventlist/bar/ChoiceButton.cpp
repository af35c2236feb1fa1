#include "widgets/eventlist/bar/ChoiceButton.h"

#include "utils/convert/PlainTip.h"
#include "widgets/charts/menus/TouchMenu.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyle>

namespace Widgets {

namespace {

/// Stays open while things are ticked in it.
class TickMenu : public TouchMenu
{
public:
    using TouchMenu::TouchMenu;

protected:
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (!toggleActive())
            TouchMenu::mouseReleaseEvent(event);
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        const bool isPress = event->key() == Qt::Key_Space || event->key() == Qt::Key_Return ||
                             event->key() == Qt::Key_Enter;
        if (!isPress || !toggleActive())
            TouchMenu::keyPressEvent(event);
    }

private:
    bool toggleActive()
    {
        QAction *action = activeAction();
        if (!action || !action->isCheckable() || !action->isEnabled())
            return false;
        action->toggle();
        return true;
    }
};

} // namespace

ChoiceButton::ChoiceButton(QString title, QWidget *parent)
    : QPushButton(parent), m_title(std::move(title))
{
    connect(this, &QPushButton::clicked, this, &ChoiceButton::openMenu);
    showState();
}

void ChoiceButton::setItems(const QVector<Item> &items)
{
    m_items = items;
    for (const QVariant &value : qAsConst(m_chosen)) {
        const bool isThere =
            std::any_of(m_items.begin(), m_items.end(),
                        [&value](const Item &item) { return item.value == value; });
        if (!isThere)
            m_items.append({value, value.toString()});
    }
}

void ChoiceButton::setChosen(const QVariantList &chosen)
{
    m_chosen = chosen;
    showState();
}

void ChoiceButton::openMenu()
{
    emit opening();
    auto *menu = new TickMenu(this);
    for (const Item &item : qAsConst(m_items)) {
        QAction *entry = menu->addAction(Utils::PlainCaption(item.text));
        entry->setCheckable(true);
        entry->setChecked(m_chosen.contains(item.value));
        connect(entry, &QAction::toggled, this,
                [this, value = item.value](bool isOn) { toggle(value, isOn); });
    }
    if (m_items.isEmpty())
        menu->addAction(QStringLiteral("Выбирать не из чего"))->setEnabled(false);
    menu->openAt(QCursor::pos());
}

void ChoiceButton::toggle(const QVariant &value, bool isOn)
{
    m_chosen.removeAll(value);
    if (isOn)
        m_chosen.append(value);
    showState();
    emit changed();
}

void ChoiceButton::showState()
{
    const bool isLatched = !m_chosen.isEmpty();
    setText(isLatched ? QStringLiteral("%1: %2 ▾").arg(m_title).arg(m_chosen.size())
                      : m_title + QStringLiteral(": все ▾"));
    if (property("isLatched").toBool() == isLatched)
        return;
    setProperty("isLatched", isLatched);
    style()->unpolish(this);
    style()->polish(this);
}

} // namespace Widgets
