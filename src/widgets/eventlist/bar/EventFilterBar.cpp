#include "widgets/eventlist/bar/EventFilterBar.h"

#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/eventlist/EventListLook.h"
#include "widgets/eventlist/bar/ChoiceButton.h"

#include "nodes/events/EventInfo.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QSignalBlocker>

namespace Widgets {

namespace {

constexpr int typingDelay = 200; // ms
constexpr int searchWidth = 200;
constexpr int longestSearch = 200;
const QString system = QStringLiteral("(система)");

std::vector<int> codesOf(const ChoiceButton &choice)
{
    std::vector<int> codes;
    const QVariantList chosen = choice.chosen();
    for (const QVariant &code : chosen)
        codes.push_back(code.toInt());
    return codes;
}

QVariantList valuesOf(const std::vector<int> &codes)
{
    QVariantList values;
    for (const int code : codes)
        values.append(code);
    return values;
}

QVector<ChoiceButton::Item> levels()
{
    QVector<ChoiceButton::Item> items;
    for (int level = Nodes::LevelCritical; level <= Nodes::LevelDebug; ++level) {
        Nodes::BasicEvent event;
        event.level = Nodes::EventLevel(level);
        items.append({level, QString::fromStdString(Nodes::EventInfo(event).GetEventLevel())});
    }
    return items;
}

QVector<ChoiceButton::Item> types()
{
    QVector<ChoiceButton::Item> items;
    for (int type = Nodes::TypeMessage; type <= Nodes::TypeSecurityEvent; ++type) {
        Nodes::BasicEvent event;
        event.type = Nodes::EventType(type);
        items.append({type, QString::fromStdString(Nodes::EventInfo(event).GetEventType())});
    }
    return items;
}

} // namespace

EventFilterBar::EventFilterBar(QWidget *parent)
    : QWidget(parent),
      m_search(new QLineEdit(this)),
      m_levels(new ChoiceButton(QStringLiteral("Уровень"), this)),
      m_types(new ChoiceButton(QStringLiteral("Тип"), this)),
      m_users(new ChoiceButton(QStringLiteral("Пользователь"), this)),
      m_reset(new QPushButton(QStringLiteral("Сбросить"), this)),
      m_details(new QPushButton(QStringLiteral("Подробно"), this)),
      m_export(new QPushButton(QStringLiteral("Сохранить…"), this))
{
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(EventListLook::Gap);
    m_search->setPlaceholderText(QStringLiteral("Найти в тексте…"));
    m_search->setClearButtonEnabled(true);
    m_search->setMinimumWidth(searchWidth);
    m_search->setMaxLength(longestSearch);
    m_typing.setSingleShot(true);
    m_typing.setInterval(typingDelay);
    connect(m_search, &QLineEdit::textChanged, &m_typing, qOverload<>(&QTimer::start));
    connect(&m_typing, &QTimer::timeout, this, &EventFilterBar::changed);
    auto *keyboard = new QPushButton(this);
    keyboard->setIcon(QIcon(QStringLiteral(":/icons/dialogs/keyboard.svg")));
    keyboard->setIconSize({28, 28});
    keyboard->setToolTip(QStringLiteral("Клавиатура"));
    connect(keyboard, &QPushButton::clicked, this, &EventFilterBar::openKeyboard);
    line->addWidget(m_search, 1);
    line->addWidget(keyboard);
    addChoices();
    addKeys();
}

void EventFilterBar::addChoices()
{
    m_levels->setItems(levels());
    m_types->setItems(types());
    for (ChoiceButton *choice : {m_levels, m_types, m_users}) {
        layout()->addWidget(choice);
        connect(choice, &ChoiceButton::changed, this, &EventFilterBar::changed);
    }
    connect(m_users, &ChoiceButton::opening, this, &EventFilterBar::usersAsked);
}

void EventFilterBar::addKeys()
{
    for (QPushButton *key : {m_reset, m_details, m_export})
        layout()->addWidget(key);
    m_details->setCheckable(true);
    connect(m_reset, &QPushButton::clicked, this, &EventFilterBar::reset);
    connect(m_details, &QPushButton::toggled, this, &EventFilterBar::detailsToggled);
    connect(m_export, &QPushButton::clicked, this, &EventFilterBar::exportAsked);
}

EventRowFilter EventFilterBar::filter() const
{
    EventRowFilter filter;
    filter.text = m_search->text().trimmed();
    filter.levels = codesOf(*m_levels);
    filter.types = codesOf(*m_types);
    const QVariantList users = m_users->chosen();
    for (const QVariant &user : users)
        filter.users.append(user.toString());
    return filter;
}

void EventFilterBar::setFilter(const EventRowFilter &filter)
{
    const QSignalBlocker silent(m_search);
    m_search->setText(filter.text);
    m_levels->setChosen(valuesOf(filter.levels));
    m_types->setChosen(valuesOf(filter.types));
    QVariantList users;
    for (const QString &user : filter.users)
        users.append(user);
    m_users->setChosen(users);
}

void EventFilterBar::setUsers(const QStringList &users)
{
    QVector<ChoiceButton::Item> items;
    for (const QString &user : users)
        items.append({user, user.isEmpty() ? system : user});
    m_users->setItems(items);
}

void EventFilterBar::setDetailsShown(bool isShown)
{
    m_details->setChecked(isShown);
}

bool EventFilterBar::isDetailsShown() const
{
    return m_details->isChecked();
}

void EventFilterBar::reset()
{
    setFilter({});
    emit changed();
}

void EventFilterBar::openKeyboard()
{
    DialogRequest request;
    request.parent = EventListLook::desktopWindowOf(this);
    request.element = m_search;
    const OwnedDialog<VirtualKeyboard> keyboard(request);
    keyboard->configure(m_search->text(), longestSearch, false);
    const QPointer<EventFilterBar> self = this;
    if (keyboard->exec() == QDialog::Accepted && keyboard && self)
        m_search->setText(keyboard->getData());
}

} // namespace Widgets
