#include "widgets/events/filter/AlarmFilterBar.h"

#include "widgets/dialogs/DialogLook.h"
#include "widgets/dialogs/Dialogs.h"
#include "widgets/dialogs/VirtualKeyboard.h"
#include "widgets/dialogs/WrapLayout.h"
#include "widgets/events/AlarmSigns.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>

namespace Widgets {

namespace {

constexpr int gap = 8;
constexpr int badgeSize = 28;
constexpr int typingDelay = 250; // ms
constexpr int textWidth = 200;

const QString noArea = QStringLiteral("Без участка");

QString nameOf(const QString &area)
{
    return area.isEmpty() ? noArea : area;
}

} // namespace

AlarmFilterBar::AlarmFilterBar(QWidget *parent) : QWidget(parent), m_row(new WrapLayout)
{
    setLayout(m_row);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(gap);
    addPriorities();
    addStates();
    addArea();
    addText();
    QPushButton *reset = addToggle(QStringLiteral("Сбросить"));
    reset->setCheckable(false);
    connect(reset, &QPushButton::clicked, this, [this] {
        setFilter({});
        tell();
    });
    m_typing.setSingleShot(true);
    m_typing.setInterval(typingDelay);
    connect(&m_typing, &QTimer::timeout, this, &AlarmFilterBar::tell);
}

QPushButton *AlarmFilterBar::addToggle(const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setCheckable(true);
    button->setChecked(true);
    MakeTouchable(*button);
    button->setFocusPolicy(Qt::NoFocus);
    m_row->addWidget(button);
    return button;
}

void AlarmFilterBar::addPriorities()
{
    for (int priority = 1; priority <= AlarmFilter::PriorityCount; ++priority) {
        QPushButton *button = addToggle({});
        button->setMinimumSize(56, TouchSize);
        button->setIcon(AlarmSigns::badge(Nodes::AlarmState::ActiveUnacked, priority, badgeSize));
        button->setIconSize({badgeSize, badgeSize});
        button->setToolTip(QStringLiteral("Тревоги приоритета %1").arg(priority));
        button->setAccessibleName(button->toolTip());
        button->setObjectName(QStringLiteral("priority%1").arg(priority));
        connect(button, &QPushButton::toggled, this, [this, button] { keepOne(button); });
        m_priorities[std::size_t(priority - 1)] = button;
    }
}

void AlarmFilterBar::addStates()
{
    const std::array<const char *, AlarmFilter::StateCount> names{"Ждут", "Активные", "Снятые"};
    const std::array<const char *, AlarmFilter::StateCount> tips{
        "Ждут квитирования", "Активные квитированные", "Снятые квитированные"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        m_states[i] = addToggle(QString::fromUtf8(names[i]));
        m_states[i]->setToolTip(QString::fromUtf8(tips[i]));
        connect(m_states[i], &QPushButton::toggled, this,
                [this, button = m_states[i]] { keepOne(button); });
    }
}

void AlarmFilterBar::addArea()
{
    m_area = new QComboBox(this);
    m_area->setMinimumHeight(TouchSize);
    m_area->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_area->setItemDelegate(new QStyledItemDelegate(m_area)); // heeds the items' size hints
    MakeLegible(*m_area);
    setAreas({});
    m_row->addWidget(m_area);
    connect(m_area, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &AlarmFilterBar::tell);
}

void AlarmFilterBar::addText()
{
    m_text = new QLineEdit(this);
    m_text->setPlaceholderText(QStringLiteral("Найти в тексте"));
    m_text->setClearButtonEnabled(true);
    m_text->setMinimumSize(textWidth, TouchSize);
    MakeLegible(*m_text);
    m_row->addWidget(m_text);
    connect(m_text, &QLineEdit::textEdited, &m_typing, QOverload<>::of(&QTimer::start));
    auto *keyboard = new QPushButton(this);
    keyboard->setFixedSize(TouchSize, TouchSize);
    keyboard->setIcon(QIcon(QStringLiteral(":/icons/dialogs/keyboard.svg")));
    keyboard->setIconSize({badgeSize, badgeSize});
    keyboard->setToolTip(QStringLiteral("Клавиатура"));
    keyboard->setFocusPolicy(Qt::NoFocus);
    m_row->addWidget(keyboard);
    connect(keyboard, &QPushButton::clicked, this, &AlarmFilterBar::openKeyboard);
}

void AlarmFilterBar::openKeyboard()
{
    DialogRequest request;
    request.parent = window();
    request.element = m_text;
    const OwnedDialog<VirtualKeyboard> keyboard(request);
    keyboard->configure(m_text->text(), m_text->maxLength(), false);
    const QPointer<AlarmFilterBar> self = this;
    if (keyboard->exec() == QDialog::Accepted && keyboard && self) {
        m_text->setText(keyboard->getData());
        tell();
    }
}

// A list that shows nothing at all is nobody's choice.
void AlarmFilterBar::keepOne(QPushButton *toggled)
{
    const auto isChecked = [](const QPushButton *button) { return button->isChecked(); };
    const bool isPriority =
        std::find(m_priorities.begin(), m_priorities.end(), toggled) != m_priorities.end();
    const bool hasAny = isPriority
                            ? std::any_of(m_priorities.begin(), m_priorities.end(), isChecked)
                            : std::any_of(m_states.begin(), m_states.end(), isChecked);
    if (!hasAny)
        toggled->setChecked(true);
    else
        tell();
}

void AlarmFilterBar::setAreas(const QStringList &areas)
{
    const QVariant chosen = m_area->currentData();
    QStringList offered = areas;
    if (chosen.isValid() && !offered.contains(chosen.toString()))
        offered.append(chosen.toString());
    const QScopedValueRollback<bool> setting(m_isSetting, true);
    m_area->clear();
    m_area->addItem(QStringLiteral("Все участки"));
    for (const QString &area : qAsConst(offered))
        m_area->addItem(nameOf(area), area);
    for (int i = 0; i < m_area->count(); ++i)
        m_area->setItemData(i, QSize(TouchSize, TouchSize), Qt::SizeHintRole);
    m_area->setCurrentIndex(chosen.isValid() ? m_area->findData(chosen) : 0);
}

void AlarmFilterBar::setFilter(const AlarmFilter &filter)
{
    const QScopedValueRollback<bool> setting(m_isSetting, true);
    for (std::size_t i = 0; i < m_priorities.size(); ++i)
        m_priorities[i]->setChecked(filter.priorities[i]);
    for (std::size_t i = 0; i < m_states.size(); ++i)
        m_states[i]->setChecked(filter.states[i]);
    if (filter.area && m_area->findData(*filter.area) < 0)
        m_area->addItem(nameOf(*filter.area), *filter.area);
    m_area->setCurrentIndex(filter.area ? m_area->findData(*filter.area) : 0);
    if (m_text->text() != filter.text)
        m_text->setText(filter.text);
}

AlarmFilter AlarmFilterBar::filter() const
{
    AlarmFilter filter;
    for (std::size_t i = 0; i < m_priorities.size(); ++i)
        filter.priorities[i] = m_priorities[i]->isChecked();
    for (std::size_t i = 0; i < m_states.size(); ++i)
        filter.states[i] = m_states[i]->isChecked();
    if (m_area->currentData().isValid())
        filter.area = m_area->currentData().toString();
    filter.text = m_text->text().trimmed();
    return filter;
}

void AlarmFilterBar::setRoom(int width)
{
    m_row->setRoom(width);
    updateGeometry();
}

void AlarmFilterBar::tell()
{
    m_typing.stop();
    if (!m_isSetting)
        emit changed(filter());
}

} // namespace Widgets
